#include "report/now_section.h"

#include <doctest/doctest.h>

#include "common/html.h"
#include "support/mornings.h"
#include "support/text_parts.h"

namespace dozewell::report {
namespace {

Explanation ExplanationAt(fakes::Configurations& configuration, int days, int64_t hour) {
  ArbitraryCycleProbabilityTracker tracker(&configuration);
  Learn(tracker, Mornings(days));
  tm time;
  TmFromSeconds(SimTime(days, hour, 3), time);
  return Explain(tracker, time);
}

std::string Facts(const Explanation& explanation) {
  return Between(NowSection(explanation), "<dl class=\"facts\">", "</dl>");
}

}  // namespace

TEST_CASE("a suspend is told with all that follows from it") {
  fakes::Configurations configuration = AllDaysAlike();
  const Explanation explanation = ExplanationAt(configuration, 10, 9);
  CHECK(Facts(explanation) ==
        "<div><dt>Hibernates</dt><dd><strong>Sun 11 Jan, 12:10</strong> "
        "<span>after 3 h 07 min of sleep</span></dd></div>"
        "<div><dt>Wakes, to be asleep and ready</dt><dd><strong>Mon 12 Jan, 08:00</strong> "
        "<span>by its timer, after 22 h 57 min</span></dd></div>"
        "<div><dt>Hibernates again</dt><dd><strong>Mon 12 Jan, 12:10</strong> "
        "<span>if nobody came for 4 h 10 min</span></dd></div>");
  const std::string section = NowSection(explanation);
  CHECK(Contains(section, "the time of this report, Sun 11 Jan, 09:03."));
  CHECK(Between(section, "<pre>", "</pre>") == HtmlText(ExplanationText(explanation)));
}

TEST_CASE("a suspend without a prediction leaves the user's own timeout") {
  fakes::Configurations configuration = AllDaysAlike();
  CHECK(Facts(ExplanationAt(configuration, 0, 9)) ==
        "<div><dt>Hibernates</dt><dd><strong>by the user&#39;s own timeout</strong> "
        "<span>since nothing is predicted</span></dd></div>");
}

TEST_CASE("a suspend without a predicted use is not followed by a wake") {
  fakes::Configurations configuration = AllDaysAlike();
  configuration.values["StrengthHigh"] = "101";
  CHECK(Facts(ExplanationAt(configuration, 10, 9)) ==
        "<div><dt>Hibernates</dt><dd><strong>Sun 11 Jan, 12:10</strong> "
        "<span>after 3 h 07 min of sleep</span></dd></div>"
        "<div><dt>Wakes by itself</dt><dd><strong>never</strong> "
        "<span>since no use is predicted</span></dd></div>");
}

TEST_CASE("a timeout that stays the same after the wake is not mentioned") {
  fakes::Configurations configuration = AllDaysAlike();
  Explanation explanation = ExplanationAt(configuration, 10, 9);
  explanation.decision.nextHAMinutes.reset();
  CHECK(CountOf("<dt>", Facts(explanation)) == 2);
}

}  // namespace dozewell::report
