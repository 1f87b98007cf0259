#include "fleet/page.h"

#include <iterator>
#include <string_view>
#include <vector>

#include "common/html.h"
#include "common/text.h"
#include "fleet/page_tables.h"
#include "fleet/result_text.h"
#include "report/document.h"

namespace dozewell::fleet {
namespace {

constexpr const char* kOwnRules =
    "body { max-width: 72rem; }\n"
    ".wide { overflow-x: auto; margin: 0 0 1rem; }\n"
    ".fleet caption { text-align: left; font-weight: 600; }\n"
    ".fleet th, .fleet td { padding: .3rem .75rem .3rem 0; border-bottom: 1px solid var(--line); "
    "vertical-align: top; overflow-wrap: normal; }\n"
    ".fleet tbody th, .fleet .long { min-width: 8rem; overflow-wrap: anywhere; }\n"
    ".fleet thead th { vertical-align: bottom; }\n"
    ".fleet .number { text-align: right; }\n"
    ".fleet td:not(.long) { white-space: nowrap; }\n"
    ".fleet .own > * { font-weight: 600; background: var(--panel); }\n"
    ".fleet .share { display: block; height: .3rem; margin: .1rem 0 0 auto; "
    "background: var(--quiet); }\n"
    "@media print { .wide { overflow: visible; } .fleet, .fleet thead th { font-size: 7pt; } }\n";

struct PageSection {
  const char* id;
  const char* title;
  std::string explanation;
  std::string content;
};

std::string SectionHtml(const PageSection& section) {
  const std::string titleId = std::string(section.id) + "-title";
  return HtmlElement(
             "section", {{"id", section.id}, {"aria-labelledby", titleId}},
             HtmlElement("h2", {{"id", titleId}}, section.title) +
                 HtmlElement("p", {{"class", "explanation"}}, HtmlText(section.explanation)) +
                 section.content) +
         "\n";
}

std::string Contents(const std::vector<PageSection>& sections) {
  std::string items;
  for (const PageSection& section : sections) {
    items += HtmlElement(
        "li", HtmlElement("a", {{"href", std::string("#") + section.id}}, section.title));
  }
  return HtmlElement("nav", {{"aria-label", "Contents"}}, HtmlElement("ul", items)) + "\n";
}

std::string OwnTimeoutText(const FleetQuestion& question) {
  return question.choices[question.Own()].name;
}

std::string Header(const FleetTotals& totals, const EnergyRates& rates) {
  const FleetQuestion& question = totals.Question();
  std::string lead = CountText(totals.All().machines, "machine", "machines");
  if (totals.To() != 0) {
    lead += " with data from " + DayText(totals.From()) + " to " + DayText(totals.To());
  }
  lead += ". Their users' own timeout is taken to be: " + OwnTimeoutText(question) +
          ". A machine takes " + DecimalText(rates.wattsAsleep, 1) + " watts asleep and " +
          DecimalText(rates.wattsHibernated, 1) + " hibernated; a kilowatt-hour costs " +
          DecimalText(rates.price, 2) + ". Settings " + question.settings + ", version " +
          question.version + ".";
  return HtmlElement("header", HtmlElement("h1", "What prediction is worth to many machines") +
                                   HtmlElement("p", {{"class", "lead"}}, HtmlText(lead))) +
         "\n";
}

std::string InForce(const FleetQuestion& question) {
  if (question.strength >= question.weights.size()) return "no strength";
  return StrengthText(question, question.strength);
}

std::string LosersText(const FleetTotals& totals) {
  const int64_t number = totals.NumberOfLosers();
  std::string text = "The service with the strength that the settings choose, " +
                     InForce(totals.Question()) +
                     ", against the users' own timeout, by its score at that weight. It is worse "
                     "on " +
                     CountText(number, "machine", "machines");
  if (number > std::ssize(totals.Losers())) {
    text += ", of which these " + std::to_string(totals.Losers().size()) + " lose most";
  }
  return text +
         ". The points are those that it scores less; beside them, where its score lies in 95 of "
         "100 draws of the history's weeks.";
}

std::vector<PageSection> Sections(const FleetTotals& totals, const EnergyRates& rates) {
  std::vector<PageSection> sections = {
      {"strengths", "Which strength for whom",
       "For each group the strength with which its machines take the least energy while their "
       "users wait no more often than now, with their own timeout; where there is none, the one "
       "with which they wait least.",
       StrengthsTable(totals, rates)},
      {"choices", "What each choice comes to",
       "All histories walked forward: each sleep is decided from what came before it alone. Hours "
       "asleep cost energy, and a user who finds the machine hibernated has to wait.",
       ChoicesTable(totals, rates)},
      {"spread", "How machines differ",
       "How many machines come to what. Means hide those for whom it is worse.",
       SpreadTable(totals, "Waits a week", &Spread::waitsPerWeek) +
           SpreadTable(totals, "Per cent of the time off that is hibernated",
                       &Spread::hibernatedPercent) +
           SpreadTable(totals, "Points of score more than with the users' own timeout",
                       &Spread::gain)},
      {"losers", "Who loses", LosersText(totals), LosersTable(totals)}};
  if (!totals.Broken().empty()) {
    sections.push_back({"broken", "Broken histories", "These are in no figure above.",
                        NotedTable("Histories that could not be judged", totals.Broken())});
  }
  if (!totals.Damaged().empty()) {
    sections.push_back({"damaged", "Damaged histories",
                        "These were judged as far as they can be read, as the service reads them.",
                        NotedTable("Histories with damage", totals.Damaged())});
  }
  return sections;
}

}  // namespace

std::string MakePage(const FleetTotals& totals, const EnergyRates& rates) {
  const std::vector<PageSection> sections = Sections(totals, rates);
  std::string content;
  for (const PageSection& section : sections) content += SectionHtml(section);
  const std::string title = "Dozewell, " + CountText(totals.All().machines, "machine", "machines");
  return report::Document(
      title, Header(totals, rates) + Contents(sections) + HtmlElement("main", "\n" + content),
      kOwnRules);
}

}  // namespace dozewell::fleet
