#include "report/why_section.h"

#include <doctest/doctest.h>

#include <string>

#include "common/html.h"
#include "support/mornings.h"
#include "support/text_parts.h"

namespace dozewell::report {
namespace {

Explanation ExplanationAfter(fakes::Configurations& configuration, int days) {
  ArbitraryCycleProbabilityTracker tracker(&configuration);
  Learn(tracker, Mornings(days));
  return Explain(tracker, SimLocalTime(days, 9, 3));
}

std::string Reasons(const Explanation& explanation) {
  return Between(WhySection(explanation).html, "</p><p>", "</p>");
}

}  // namespace

TEST_CASE("the times of tonight are explained in sentences, with the evidence behind them") {
  fakes::Configurations configuration = AllDaysAlike();
  const Explanation explanation = ExplanationAfter(configuration, 10);
  CHECK(Reasons(explanation) ==
        "Idle from Sun 11 Jan, 12:10, the next 30 minutes in which use is less likely than 30 % "
        "(StrengthLow): at most 25 %. In use again from Mon 12 Jan, 08:00, the first time after "
        "that in which use is as likely as 70 % (StrengthHigh): 100 %. Idle again from Mon 12 Jan, "
        "12:10.");
  CHECK(Between(WhySection(explanation).html, "<pre>", "</pre>") ==
        HtmlText(ExplanationText(explanation)));
}

TEST_CASE("the page says why nothing is predicted") {
  fakes::Configurations configuration = AllDaysAlike();
  CHECK(Reasons(ExplanationAfter(configuration, 0)) ==
        "No idle stretch is predicted, since nothing is known yet about Thu 1 Jan, 09:10. So the "
        "user&#39;s own timeout holds.");
  configuration.values["StrengthLow"] = "0";
  CHECK(Reasons(ExplanationAfter(configuration, 10)) ==
        "No idle stretch is predicted, since no 30 minutes in a row are below 0 % (StrengthLow). "
        "So the user&#39;s own timeout holds.");
  Explanation explanation = ExplanationAfter(configuration, 10);
  explanation.idle.end = SearchEnd::TooFewSlots;
  CHECK(Contains(Reasons(explanation), "since the cycle has no other slot than this one."));
  explanation.idle.end = SearchEnd::SlotsTooLong;
  explanation.minutesPerSlot = 60;
  CHECK(Contains(Reasons(explanation),
                 "since slots of 60 minutes are longer than the 30 minutes of an idle stretch."));
}

TEST_CASE("the page says why it is not woken, and why it does not hibernate again") {
  fakes::Configurations configuration = AllDaysAlike();
  configuration.values["StrengthHigh"] = "101";
  CHECK(Contains(Reasons(ExplanationAfter(configuration, 10)),
                 " No next use is predicted, since no time of day reaches 101 % (StrengthHigh). So "
                 "it is not woken."));
  configuration.values["StrengthHigh"] = "70";
  Explanation explanation = ExplanationAfter(configuration, 10);
  explanation.nextIdle->end = SearchEnd::Nowhere;
  CHECK(Reasons(explanation)
            .ends_with("After that no idle stretch is predicted, since no 30 "
                       "minutes in a row are below 30 % (StrengthLow)."));
}

}  // namespace dozewell::report
