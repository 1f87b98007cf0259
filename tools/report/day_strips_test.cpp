#include "report/day_strips.h"

#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "support/sim_days.h"
#include "support/text_parts.h"

namespace dozewell::report {
namespace {

constexpr StretchKind kKinds[] = {{"use", "in use"}, {"asleep", "asleep"}};

}  // namespace

TEST_CASE("a stretch over midnight is cut into its days") {
  const std::vector<Stretch> stretches = {{SimTime(0, 18), SimTime(1, 6), 0},
                                          {SimTime(1, 6), SimTime(1, 12), 1}};
  const std::string figure = DayStrips("The <days>", kKinds, stretches, SimTime(0, 0), 2);
  CHECK(Between(figure, "<caption class=\"unseen\">", "</caption>") == "The &lt;days&gt;");
  CHECK(Between(figure, "<ul class=\"legend\">", "</ul>") ==
        "<li><i class=\"swatch use\"></i>in use</li>"
        "<li><i class=\"swatch asleep\"></i>asleep</li>");
  CHECK(Between(figure, "<tbody>", "</tbody>") ==
        "<tr class=\"day\"><th scope=\"row\">Thu 1 Jan</th><td><div class=\"strip\" role=\"img\" "
        "aria-label=\"in use 6.0 hours\">"
        "<i class=\"use\" style=\"left:75.00%;width:25.00%\" title=\"in use, 18:00 to 24:00\"></i>"
        "</div></td></tr>\n"
        "<tr class=\"day\"><th scope=\"row\">Fri 2 Jan</th><td><div class=\"strip\" role=\"img\" "
        "aria-label=\"in use 6.0 hours, asleep 6.0 hours\">"
        "<i class=\"use\" style=\"left:0.00%;width:25.00%\" title=\"in use, 00:00 to 06:00\"></i>"
        "<i class=\"asleep\" style=\"left:25.00%;width:25.00%\" title=\"asleep, 06:00 to "
        "12:00\"></i></div></td></tr>\n");
}

TEST_CASE("days without stretches are there, and a week begins on Monday") {
  const std::string figure = DayStrips("", kKinds, {}, SimTime(3, 0), 2);
  CHECK(Between(figure, "<tbody>", "</tbody>") ==
        "<tr class=\"day\"><th scope=\"row\">Sun 4 Jan</th><td><div class=\"strip\" role=\"img\" "
        "aria-label=\"nothing known\"></div></td></tr>\n"
        "<tr class=\"monday\"><th scope=\"row\">Mon 5 Jan</th><td><div class=\"strip\" "
        "role=\"img\" aria-label=\"nothing known\"></div></td></tr>\n");
}

TEST_CASE("what lies outside the days is left out") {
  const std::vector<Stretch> stretches = {{SimTime(0, 0), SimTime(1, 0), 0},
                                          {SimTime(2, 0), SimTime(3, 0), 0}};
  const std::string figure = DayStrips("", kKinds, stretches, SimTime(1, 0), 1);
  CHECK(figure.find("title=") == std::string::npos);
}

}  // namespace dozewell::report
