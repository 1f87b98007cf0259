#include "report/tonight_section.h"

#include <cstdint>
#include <string_view>

#include "base/numbers.h"
#include "common/duration_text.h"
#include "common/html.h"
#include "report/figure_text.h"
#include "report/outlook_figure.h"

namespace dozewell::report {
namespace {

// One thing that will happen: what, with the colour that it has in the figures, when, and how.
std::string Fact(const char* cssClass, std::string_view what, std::string_view when,
                 std::string_view how) {
  const std::string area = std::string("swatch ") + cssClass;
  return HtmlElement("div",
                     HtmlElement("dt", HtmlElement("i", {{"class", area}}, "") + HtmlText(what)) +
                         HtmlElement("dd", HtmlElement("strong", HtmlText(when)) + " " +
                                               HtmlElement("span", HtmlText(how))));
}

tm MinutesLater(tm time, int32_t minutes) {
  AddSecondsToTime(&time, Wrap32(int64_t{minutes} * 60));
  return time;
}

std::string Facts(const tm& now, const SuspendDecision& decision, std::string_view whyNoWake) {
  if (!decision.haMinutes) {
    return Fact("hibernated", "Hibernates", "by the user's own timeout",
                "since nothing is predicted");
  }
  std::string facts =
      Fact("hibernated", "Hibernates", DateTimeText(MinutesLater(now, *decision.haMinutes)),
           "after " + DurationText(*decision.haMinutes) + " of sleep");
  if (!decision.nextSleepTime) {
    return facts + Fact("woken", "Wakes by itself", "never", whyNoWake);
  }
  facts += Fact("woken", "Wakes, to be asleep and ready", DateTimeText(*decision.nextSleepTime),
                "by its timer, after " + DurationText(*decision.timerMinutes));
  if (!decision.nextHAMinutes) return facts;
  return facts + Fact("hibernated", "Hibernates again",
                      DateTimeText(MinutesLater(*decision.nextSleepTime, *decision.nextHAMinutes)),
                      "if nobody came for " + DurationText(*decision.nextHAMinutes));
}

Section Tonight(const tm& at, const std::string& facts, const std::string& figure) {
  return MakeSection("tonight", "What will happen tonight",
                     "When this machine is put to sleep at the time of this report, " +
                         DateTimeText(at) + ", and nobody comes.",
                     HtmlElement("dl", {{"class", "facts"}}, facts) + figure);
}

}  // namespace

Section TonightSection(const Explanation& explanation, ArbitraryCycleProbabilityTracker& tracker) {
  return Tonight(explanation.at,
                 Facts(explanation.at, explanation.decision, "since no use is predicted"),
                 OutlookFigure(tracker, explanation.at));
}

Section TonightSection(const RatesExplanation& explanation) {
  const char* const whyNoWake =
      explanation.wishes.canWake ? "since a wake would not pay" : "since nothing can wake it";
  return Tonight(explanation.at, Facts(explanation.at, explanation.suspend, whyNoWake), "");
}

}  // namespace dozewell::report
