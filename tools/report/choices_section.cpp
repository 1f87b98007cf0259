#include "report/choices_section.h"

#include <algorithm>
#include <string_view>

#include "common/hours_text.h"
#include "common/html.h"
#include "report/figure_text.h"

namespace dozewell::report {
namespace {

// The largest numbers of the table, whose bars fill their cells.
struct Scale {
  int64_t sleepSeconds = 0;
  int64_t resumesFromHibernate = 0;
};

std::string Number(const std::string& text) {
  return HtmlElement("td", {{"class", "number"}}, HtmlText(text));
}

// A number over a bar as long as its share of the largest one.
std::string Measured(const char* barClass, const std::string& text, int64_t value,
                     int64_t largest) {
  const std::string width = "width:" + (largest > 0 ? CssPercent(value, largest) : "0");
  return HtmlElement(
      "td", {{"class", "number"}},
      HtmlText(text) + HtmlElement("i", {{"class", barClass}, {"style", width}}, ""));
}

std::string Row(std::string_view name, const Outcomes& outcomes, const Scale& scale,
                const char* cssClass = "choice") {
  return HtmlElement("tr", {{"class", cssClass}},
                     HtmlElement("th", {{"scope", "row"}}, HtmlText(name)) +
                         Measured("bar asleep", HoursText(outcomes.sleepSeconds),
                                  outcomes.sleepSeconds, scale.sleepSeconds) +
                         Number(HoursText(outcomes.hibernateSeconds)) +
                         Number(std::to_string(outcomes.resumesFromSleep)) +
                         Measured("bar wait", std::to_string(outcomes.resumesFromHibernate),
                                  outcomes.resumesFromHibernate, scale.resumesFromHibernate)) +
         "\n";
}

std::string Group(const char* title, const std::string& rows) {
  return HtmlElement(
      "tbody",
      HtmlElement(
          "tr",
          HtmlElement("th", {{"scope", "rowgroup"}, {"colspan", "5"}, {"class", "group"}}, title)) +
          rows);
}

std::string Table(const Comparison& comparison) {
  Scale scale;
  const auto widen = [&scale](const Outcomes& outcomes) {
    scale.sleepSeconds = std::max(scale.sleepSeconds, outcomes.sleepSeconds);
    scale.resumesFromHibernate =
        std::max<int64_t>(scale.resumesFromHibernate, outcomes.resumesFromHibernate);
  };
  for (const Choice& choice : comparison.fixed) widen(choice.outcomes);
  widen(comparison.settings.outcomes);
  for (const Choice& choice : comparison.adopted) widen(choice.outcomes);

  std::string head;
  for (const char* const title :
       {"", "hours asleep", "hours hibernated", "ready at once", "had to wait"}) {
    head += *title == 0 ? "<td></td>" : HtmlElement("th", {{"scope", "col"}}, title);
  }
  std::string fixed;
  for (const Choice& choice : comparison.fixed) fixed += Row(choice.name, choice.outcomes, scale);
  const std::string settings = Row("these settings", comparison.settings.outcomes, scale, "chosen");
  std::string found;
  for (size_t i = 0; i < comparison.adopted.size(); ++i) {
    found += Row("strength " + std::to_string(i), comparison.adopted[i].outcomes, scale);
  }
  return HtmlElement("table", {{"class", "gain"}},
                     HtmlElement("caption", {{"class", "unseen"}},
                                 "The outcomes of the history with each choice") +
                         HtmlElement("thead", HtmlElement("tr", head)) +
                         Group("Fixed timeouts", fixed) +
                         Group("Predicted with these settings from the first day on", settings) +
                         Group("Hindsight: sets that a search found in this very history", found) +
                         Group("Knowing the future",
                               Row("best possible", comparison.clairvoyant.outcomes, scale)));
}

}  // namespace

Section ChoicesSection(const Comparison& comparison) {
  return MakeSection(
      "choices", "Every choice, replayed",
      "The whole history replayed with each choice, which some of them could not have made then: "
      "what a search found in this history, these settings too when a search chose them, looks "
      "better on it than it will be.",
      Legend(LegendEntry("asleep", "hours asleep, which cost power") +
             LegendEntry("wait", "had to wait, since it was hibernated")) +
          Table(comparison));
}

}  // namespace dozewell::report
