#include "report/gain_section.h"

#include <doctest/doctest.h>

#include "support/text_parts.h"

namespace dozewell::report {
namespace {

constexpr int64_t kHour = 3600;

Comparison Example() {
  Comparison comparison = {};
  comparison.fixed = {{"10 minutes", "", {2 * kHour, 98 * kHour, 0, 10}},
                      {"never", "", {100 * kHour, 0, 10, 0}}};
  comparison.settings = {"settings", "", {20 * kHour, 80 * kHour, 6, 4}};
  comparison.adopted = {{"Best0", "-1", {40 * kHour, 60 * kHour, 5, 5}}};
  comparison.clairvoyant = {"clairvoyant", "", {kHour, 99 * kHour, 10, 0}};
  comparison.baseline = {40 * kHour, 60 * kHour, 5, 5};
  return comparison;
}

std::string Summary(const Outcomes& settings, const Outcomes& baseline, int64_t seconds) {
  Comparison comparison = Example();
  comparison.settings.outcomes = settings;
  comparison.baseline = baseline;
  return Between(GainSection(comparison, seconds), "</p><p>", "</p>");
}

}  // namespace

TEST_CASE("the gain is told in words") {
  CHECK(Summary({20 * kHour, 0, 6, 4}, {40 * kHour, 0, 5, 5}, 3 * kHour) ==
        "<strong>Less power, less waiting.</strong> Next to a fixed timeout of 180 minutes, these "
        "settings would have left it asleep for 20.0 hours instead of 40.0. It would have been "
        "ready at once 6 times instead of 5, and its user would have had to wait 4 times instead "
        "of 5.");
  CHECK(Contains(Summary({2, 0, 0, 1}, {1, 0, 0, 0}, 0),
                 "<strong>More power, more waiting.</strong> Next to never hibernating, "));
  CHECK(Contains(Summary({1, 0, 0, 0}, {1, 0, 0, 0}, 60),
                 "<strong>As much power, as much waiting.</strong>"));
}

TEST_CASE("every choice has a row in its group") {
  const std::string section = GainSection(Example(), 600);
  CHECK(CountOf("<th scope=\"rowgroup\"", section) == 3);
  CHECK(Between(section, "<tr class=\"chosen\">", "</tr>") ==
        "<th scope=\"row\">these settings</th>"
        "<td class=\"number\">20.0<i class=\"bar\" style=\"width:20.00%\"></i></td>"
        "<td class=\"number\">80.0</td><td class=\"number\">6</td>"
        "<td class=\"number\">4<i class=\"bar\" style=\"width:40.00%\"></i></td>");
  for (const char* const name : {"10 minutes", "never", "strength 0", "best possible"}) {
    CHECK(Contains(section, std::string("<th scope=\"row\">") + name + "</th>"));
  }
}

TEST_CASE("the largest number fills its cell, whichever choice has it") {
  Comparison comparison = Example();
  for (Choice* const choice :
       {&comparison.fixed[0], &comparison.settings, &comparison.adopted[0]}) {
    const Choice before = *choice;
    choice->outcomes = {1000 * kHour, 0, 0, 1000};
    const std::string section = GainSection(comparison, 600);
    CHECK(Contains(section, ">1000.0<i class=\"bar\" style=\"width:100.00%\"></i></td>"));
    CHECK(Contains(section, ">1000<i class=\"bar\" style=\"width:100.00%\"></i></td>"));
    *choice = before;
  }
}

TEST_CASE("a history without a rest is called too short") {
  Comparison comparison = {};
  comparison.fixed = {{"never", "", {}}};
  CHECK(Contains(GainSection(comparison, 600),
                 "<p>The history is too short to compare anything.</p>"));
}

}  // namespace dozewell::report
