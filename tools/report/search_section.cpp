#include "report/search_section.h"

#include <cmath>
#include <cstddef>
#include <optional>

#include "common/format_text.h"
#include "common/hours_text.h"
#include "common/html.h"
#include "common/text.h"
#include "optimizer/best_set.h"
#include "report/figure_text.h"
#include "report/set_text.h"

namespace dozewell::report {
namespace {

std::string ScoreText(float score) {
  return std::isnan(score) ? "no score" : FormatText("%.2f", static_cast<double>(score));
}

std::string WeightText(int32_t weight) {
  return "Of 100 points, " + std::to_string(weight) + " go by how often it is ready at once and " +
         std::to_string(100 - int64_t{weight}) + " by how much of its rest it spends hibernated.";
}

std::string OutcomeText(const Outcomes& outcomes) {
  return "ready at once " + std::to_string(outcomes.resumesFromSleep) + " of " +
         CountText(int64_t{outcomes.resumesFromSleep} + outcomes.resumesFromHibernate, "time",
                   "times") +
         ", hibernated for " + HoursText(outcomes.hibernateSeconds) + " of " +
         HoursText(outcomes.sleepSeconds + outcomes.hibernateSeconds) + " hours";
}

std::string WhyNone(const BestSet& best, const std::string& fixed) {
  if (std::isnan(best.baseline)) {
    return "The history has no rest to score, so the service would predict nothing with this "
           "strength.";
  }
  return "No set reaches the " + ScoreText(best.baseline) + " points of " + fixed +
         ", so the service would predict nothing with this strength. The best one scores " +
         ScoreText(best.score) + ".";
}

std::string WhyBest(const BestSet& best, const Outcomes& outcomes, const Comparison& comparison,
                    const std::string& fixed) {
  return "The best set scores " + ScoreText(best.score) + " points: " + OutcomeText(outcomes) +
         ". It is taken because it reaches the " + ScoreText(best.baseline) + " points of " +
         fixed + ": " + OutcomeText(comparison.baseline) + ".";
}

std::string Score(const char* name, const char* cssClass, float score) {
  const bool fits = score >= 0 && score <= 100;
  const std::string width =
      "width:" + (fits ? CssPercent(std::lround(score * 100), 10000) : std::string("0"));
  return HtmlElement(
      "div",
      HtmlElement("dt", HtmlText(name)) +
          HtmlElement("dd", HtmlElement("span", ScoreText(score)) +
                                HtmlElement("i", {{"class", cssClass}, {"style", width}}, "")));
}

std::string Winner(const Comparison& comparison, size_t index, int32_t weight, bool chosen,
                   const std::string& fixed) {
  const BestSet& best = comparison.best[index];
  std::string why;
  if (best.value == kNoBestSet) {
    why = Paragraph(WhyNone(best, fixed));
  } else if (const std::optional<ParameterSet> set = SetOf(best)) {
    why = Paragraph(WhyBest(best, comparison.adopted[index].outcomes, comparison, fixed)) +
          Paragraph(SetText(*set));
  } else {
    why = Paragraph("There was no set to try, so the parameters stay as they are.");
  }
  const std::string badge = chosen ? " " + HtmlElement("span", {{"class", "badge"}}, "chosen") : "";
  return HtmlElement("article",
                     HtmlElement("h3", HtmlText("Strength " + std::to_string(index)) + badge) +
                         Paragraph(WeightText(weight)) +
                         HtmlElement("dl", {{"class", "scores"}},
                                     Score("best set", "bar score", best.score) +
                                         Score("fixed timeout", "bar", best.baseline)) +
                         why) +
         "\n";
}

}  // namespace

Section SearchSection(const Comparison& comparison, const std::vector<int32_t>& weights,
                      const std::string& strength, int64_t hibernateAfterSeconds) {
  const std::string fixed = TimeoutText(hibernateAfterSeconds);
  std::string winners;
  for (size_t i = 0; i < comparison.best.size(); ++i) {
    winners += Winner(comparison, i, weights[i], strength == std::to_string(i), fixed);
  }
  if (winners.empty()) {
    winners = Paragraph("The settings name no weights (WR), so nothing is searched for.");
  }
  return MakeSection("search", "What a search chooses",
                     "For each strength, the best of the " + std::to_string(comparison.sets) +
                         " parameter sets when each replays this history, and the score of " +
                         fixed +
                         ", which it has to reach. All scores are hindsight: the sets were chosen "
                         "by the history that they are judged by.",
                     winners);
}

}  // namespace dozewell::report
