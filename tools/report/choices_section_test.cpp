#include "report/choices_section.h"

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

}  // namespace

TEST_CASE("every choice has a row in its group") {
  const std::string section = ChoicesSection(Example()).html;
  CHECK(CountOf("<th scope=\"rowgroup\"", section) == 4);
  CHECK(Between(section, "<tr class=\"chosen\">", "</tr>") ==
        "<th scope=\"row\">these settings</th>"
        "<td class=\"number\">20.0<i class=\"bar asleep\" style=\"width:20.00%\"></i></td>"
        "<td class=\"number\">80.0</td><td class=\"number\">6</td>"
        "<td class=\"number\">4<i class=\"bar wait\" style=\"width:40.00%\"></i></td>");
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
    const std::string section = ChoicesSection(comparison).html;
    CHECK(Contains(section, ">1000.0<i class=\"bar asleep\" style=\"width:100.00%\"></i></td>"));
    CHECK(Contains(section, ">1000<i class=\"bar wait\" style=\"width:100.00%\"></i></td>"));
    *choice = before;
  }
}

TEST_CASE("what a search found in this history is called hindsight") {
  const std::string section = ChoicesSection(Example()).html;
  const std::string found = Between(section,
                                    "Hindsight: sets that a search found in this very "
                                    "history</th></tr>",
                                    "</tbody>");
  CHECK(CountOf("<tr", found) == 1);
  CHECK(Contains(found, "<th scope=\"row\">strength 0</th>"));
  CHECK(Contains(section, "looks better on it than it will be."));
}

}  // namespace dozewell::report
