#include "report/why_section.h"

#include <algorithm>
#include <string>

#include "common/html.h"
#include "report/figure_text.h"

namespace dozewell::report {
namespace {

std::string PercentOf(float share) { return PercentText(static_cast<double>(share)) + " %"; }

// Why a search found nothing. `nowhere` is the reason when it went once round the cycle.
std::string WhyNothing(const SearchExplanation& search, int32_t minutesPerSlot,
                       const std::string& nowhere) {
  switch (search.end) {
    case SearchEnd::UnknownSlot:
      return "nothing is known yet about " + DateTimeText(search.slots.front().start);
    case SearchEnd::SlotsTooLong:
      return "slots of " + std::to_string(minutesPerSlot) + " minutes are longer than the " +
             std::to_string(kIdleStretchMinutes) + " minutes of an idle stretch";
    case SearchEnd::TooFewSlots:
      return "the cycle has no other slot than this one";
    case SearchEnd::Nowhere:
    case SearchEnd::Found:
      break;
  }
  return nowhere;
}

std::string WhyNoIdle(const SearchExplanation& search, const Explanation& explanation) {
  return WhyNothing(search, explanation.minutesPerSlot,
                    "no " + std::to_string(kIdleStretchMinutes) + " minutes in a row are below " +
                        PercentOf(explanation.strengthLow) + " (StrengthLow)");
}

std::string WhyIdle(const Explanation& explanation) {
  const SearchExplanation& idle = explanation.idle;
  if (idle.end == SearchEnd::Found) {
    const auto likeliest = std::ranges::max_element(idle.slots, {}, &SlotEvidence::probability);
    return "Idle from " + DateTimeText(idle.foundAt) + ", the next " +
           std::to_string(kIdleStretchMinutes) + " minutes in which use is less likely than " +
           PercentOf(explanation.strengthLow) + " (StrengthLow): at most " +
           PercentOf(likeliest->probability) + ".";
  }
  return "No idle stretch is predicted, since " + WhyNoIdle(idle, explanation) +
         ". So the user's own timeout holds.";
}

std::string WhyUse(const SearchExplanation& use, const Explanation& explanation) {
  const std::string threshold = PercentOf(explanation.strengthHigh);
  if (use.end == SearchEnd::Found) {
    return "In use again from " + DateTimeText(use.foundAt) +
           ", the first time after that in which use is as likely as " + threshold +
           " (StrengthHigh): " + PercentOf(use.slots.front().probability) + ".";
  }
  return "No next use is predicted, since " +
         WhyNothing(use, explanation.minutesPerSlot,
                    "no time of day reaches " + threshold + " (StrengthHigh)") +
         ". So it is not woken.";
}

std::string WhyNextIdle(const SearchExplanation& idle, const Explanation& explanation) {
  if (idle.end == SearchEnd::Found) {
    return "Idle again from " + DateTimeText(idle.foundAt) + ".";
  }
  return "After that no idle stretch is predicted, since " + WhyNoIdle(idle, explanation) + ".";
}

}  // namespace

Section WhySection(const RatesExplanation& explanation) {
  return MakeSection(
      "why", "Why",
      "How the predictor of rates decides, by what it has learnt: in it a rate is in "
      "returns an hour.",
      Paragraph(RatesExplanationText(explanation)));
}

Section WhySection(const Explanation& explanation) {
  std::string reasons = WhyIdle(explanation);
  if (explanation.use) reasons += " " + WhyUse(*explanation.use, explanation);
  if (explanation.nextIdle) reasons += " " + WhyNextIdle(*explanation.nextIdle, explanation);
  return MakeSection(
      "why", "Why", "How the times of tonight follow from what it has learnt.",
      Paragraph(reasons) + Fold("The evidence, number by number",
                                HtmlElement("pre", HtmlText(ExplanationText(explanation)))));
}

}  // namespace dozewell::report
