#include "report/gain_section.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "common/hours_text.h"
#include "common/html.h"
#include "common/text.h"
#include "report/figure_text.h"
#include "report/section.h"

namespace dozewell::report {
namespace {

// The largest numbers of the table, whose bars fill their cells.
struct Scale {
  int64_t sleepSeconds = 0;
  int64_t resumesFromHibernate = 0;
};

const char* Compared(int64_t value, int64_t with, const char* less, const char* same,
                     const char* more) {
  if (value == with) return same;
  return value < with ? less : more;
}

std::string Verdict(const Outcomes& predicted, const Outcomes& fixed) {
  return std::string(Compared(predicted.sleepSeconds, fixed.sleepSeconds, "Less power",
                              "As much power", "More power")) +
         ", " +
         Compared(predicted.resumesFromHibernate, fixed.resumesFromHibernate, "less waiting",
                  "as much waiting", "more waiting") +
         ".";
}

std::string Summary(const Outcomes& predicted, const Outcomes& fixed, int64_t timeoutSeconds) {
  return "Next to " + TimeoutText(timeoutSeconds) +
         ", these settings would have left it asleep for " + HoursText(predicted.sleepSeconds) +
         " hours instead of " + HoursText(fixed.sleepSeconds) +
         ". It would have been ready at once " +
         CountText(predicted.resumesFromSleep, "time", "times") + " instead of " +
         std::to_string(fixed.resumesFromSleep) + ", and its user would have had to wait " +
         CountText(predicted.resumesFromHibernate, "time", "times") + " instead of " +
         std::to_string(fixed.resumesFromHibernate) + ".";
}

std::string Number(const std::string& text) {
  return HtmlElement("td", {{"class", "number"}}, HtmlText(text));
}

// A number over a bar as long as its share of the largest one.
std::string Measured(const std::string& text, int64_t value, int64_t largest) {
  const std::string width = "width:" + (largest > 0 ? CssPercent(value, largest) : "0");
  return HtmlElement("td", {{"class", "number"}},
                     HtmlText(text) + HtmlElement("i", {{"class", "bar"}, {"style", width}}, ""));
}

std::string Row(std::string_view name, const Outcomes& outcomes, const Scale& scale,
                const char* cssClass = "choice") {
  return HtmlElement("tr", {{"class", cssClass}},
                     HtmlElement("th", {{"scope", "row"}}, HtmlText(name)) +
                         Measured(HoursText(outcomes.sleepSeconds), outcomes.sleepSeconds,
                                  scale.sleepSeconds) +
                         Number(HoursText(outcomes.hibernateSeconds)) +
                         Number(std::to_string(outcomes.resumesFromSleep)) +
                         Measured(std::to_string(outcomes.resumesFromHibernate),
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
  std::string predicted = Row("these settings", comparison.settings.outcomes, scale, "chosen");
  for (size_t i = 0; i < comparison.adopted.size(); ++i) {
    predicted += Row("strength " + std::to_string(i), comparison.adopted[i].outcomes, scale);
  }
  return HtmlElement("table", {{"class", "gain"}},
                     HtmlElement("caption", {{"class", "unseen"}},
                                 "The outcomes of the history with each choice") +
                         HtmlElement("thead", HtmlElement("tr", head)) +
                         Group("Fixed timeout", fixed) + Group("Predicted", predicted) +
                         Group("Knowing the future",
                               Row("best possible", comparison.clairvoyant.outcomes, scale)));
}

}  // namespace

std::string GainSection(const Comparison& comparison, int64_t hibernateAfterSeconds) {
  const Outcomes& predicted = comparison.settings.outcomes;
  const bool nothing = comparison.fixed.back().outcomes == Outcomes();
  const std::string figure =
      nothing
          ? Paragraph("The history is too short to compare anything.")
          : HtmlElement(
                "p", HtmlElement("strong", Verdict(predicted, comparison.baseline)) + " " +
                         HtmlText(Summary(predicted, comparison.baseline, hibernateAfterSeconds))) +
                Table(comparison);
  return Section(
      "gain", "What is gained",
      "The recorded history, replayed with fixed hibernate-after timeouts and with "
      "predictions: hours asleep cost power, and a user who finds it hibernated has to wait.",
      figure);
}

}  // namespace dozewell::report
