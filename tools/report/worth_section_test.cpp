#include "report/worth_section.h"

#include <doctest/doctest.h>

#include "support/text_parts.h"

namespace dozewell::report {
namespace {

constexpr int64_t kHourOfSleep = 3600;

std::string Words(const Outcomes& settings, const Outcomes& baseline, int64_t seconds) {
  Comparison comparison = {};
  comparison.settings.outcomes = settings;
  comparison.baseline = baseline;
  return Between(WorthSection(comparison, seconds).html, "</p><p>", "</p>");
}

}  // namespace

TEST_CASE("the worth is told in words") {
  CHECK(Words({20 * kHourOfSleep, 0, 6, 4}, {40 * kHourOfSleep, 0, 5, 5}, 3 * kHourOfSleep) ==
        "<strong>Less power, less waiting.</strong> Next to a fixed timeout of 180 minutes, it was "
        "asleep for 20.0 hours instead of 40.0. It was ready at once 6 times instead of 5, and its "
        "user had to wait 4 times instead of 5.");
  CHECK(Contains(Words({2, 0, 0, 1}, {1, 0, 0, 0}, 0),
                 "<strong>More power, more waiting.</strong> Next to never hibernating, "));
  CHECK(Contains(Words({1, 0, 0, 0}, {1, 0, 0, 0}, 60),
                 "<strong>As much power, as much waiting.</strong>"));
}

TEST_CASE("the page says why nothing can be compared") {
  CHECK(Contains(TooShortSection().html,
                 "Nothing can be compared yet: the history has no sleep that ended."));
  CHECK(Contains(BrokenSection("a <reason>").html,
                 "The history cannot be replayed: a &lt;reason&gt;."));
}

}  // namespace dozewell::report
