#include "report/now_section.h"

#include <cstdint>
#include <string_view>

#include "base/numbers.h"
#include "common/duration_text.h"
#include "common/html.h"
#include "report/figure_text.h"
#include "report/section.h"

namespace dozewell::report {
namespace {

// One thing that will happen: what, when, and how.
std::string Fact(std::string_view what, std::string_view when, std::string_view how) {
  return HtmlElement("div", HtmlElement("dt", HtmlText(what)) +
                                HtmlElement("dd", HtmlElement("strong", HtmlText(when)) + " " +
                                                      HtmlElement("span", HtmlText(how))));
}

tm MinutesLater(tm time, int32_t minutes) {
  AddSecondsToTime(&time, Wrap32(int64_t{minutes} * 60));
  return time;
}

std::string Facts(const tm& now, const SuspendDecision& decision) {
  if (!decision.haMinutes) {
    return Fact("Hibernates", "by the user's own timeout", "since nothing is predicted");
  }
  std::string facts = Fact("Hibernates", DateTimeText(MinutesLater(now, *decision.haMinutes)),
                           "after " + DurationText(*decision.haMinutes) + " of sleep");
  if (!decision.nextSleepTime) {
    return facts + Fact("Wakes by itself", "never", "since no use is predicted");
  }
  facts += Fact("Wakes, to be asleep and ready", DateTimeText(*decision.nextSleepTime),
                "by its timer, after " + DurationText(*decision.timerMinutes));
  if (!decision.nextHAMinutes) return facts;
  return facts + Fact("Hibernates again",
                      DateTimeText(MinutesLater(*decision.nextSleepTime, *decision.nextHAMinutes)),
                      "if nobody came for " + DurationText(*decision.nextHAMinutes));
}

}  // namespace

std::string NowSection(const Explanation& explanation) {
  return Section(
      "now", "If it is put to sleep now",
      "What the service does with the machine when it is suspended at the time of this "
      "report, " +
          DateTimeText(explanation.at) + ".",
      HtmlElement("dl", {{"class", "facts"}}, Facts(explanation.at, explanation.decision)) +
          HtmlElement("details", HtmlElement("summary", "The evidence") +
                                     HtmlElement("pre", HtmlText(ExplanationText(explanation)))));
}

}  // namespace dozewell::report
