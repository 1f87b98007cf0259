#include "report/day_strips.h"

#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "report/section.h"
#include "support/sim_days.h"
#include "support/text_parts.h"

namespace dozewell::report {
namespace {

constexpr StretchKind kKinds[] = {{"use", "in use"}, {"asleep", "asleep"}, {"none", "no record"}};

}  // namespace

TEST_CASE("a stretch over midnight is cut into its days, and time without one is a kind too") {
  const std::vector<Stretch> stretches = {{SimTime(0, 18), SimTime(1, 6), 0},
                                          {SimTime(1, 6), SimTime(1, 12), 1}};
  const std::string figure = DayStrips("The <days>", {kKinds, stretches, SimTime(0, 0), 2});
  CHECK(Between(figure, "<caption class=\"unseen\">", "</caption>") == "The &lt;days&gt;");
  CHECK(Between(figure, "<ul class=\"legend\">", "</ul>") ==
        "<li><i class=\"swatch use\"></i>in use</li>"
        "<li><i class=\"swatch asleep\"></i>asleep</li>"
        "<li><i class=\"swatch none\"></i>no record</li>");
  CHECK(Between(figure, "<tbody>", "</tbody>") ==
        "<tr class=\"day\"><th scope=\"row\">Thu 1 Jan</th><td><div class=\"strip\" role=\"img\" "
        "aria-label=\"in use 6.0 hours, no record 18.0 hours\">"
        "<i class=\"none\" style=\"left:0.00%;width:75.00%\" title=\"no record, 00:00 to "
        "18:00\"></i>"
        "<i class=\"use\" style=\"left:75.00%;width:25.00%\" title=\"in use, 18:00 to 24:00\"></i>"
        "</div></td></tr>\n"
        "<tr class=\"day\"><th scope=\"row\">Fri 2 Jan</th><td><div class=\"strip\" role=\"img\" "
        "aria-label=\"in use 6.0 hours, asleep 6.0 hours, no record 12.0 hours\">"
        "<i class=\"use\" style=\"left:0.00%;width:25.00%\" title=\"in use, 00:00 to 06:00\"></i>"
        "<i class=\"asleep\" style=\"left:25.00%;width:25.00%\" title=\"asleep, 06:00 to "
        "12:00\"></i>"
        "<i class=\"none\" style=\"left:50.00%;width:50.00%\" title=\"no record, 12:00 to "
        "24:00\"></i></div></td></tr>\n");
}

TEST_CASE("the times of each day are listed by kind") {
  const std::vector<Stretch> stretches = {{SimTime(0, 8), SimTime(0, 12), 0},
                                          {SimTime(0, 12), SimTime(0, 13), 1},
                                          {SimTime(0, 13), SimTime(1, 1), 0}};
  const std::string table = DayTimes("<Times>", {kKinds, stretches, SimTime(0, 0), 2});
  CHECK(Between(table, "<caption>", "</caption>") == "&lt;Times&gt;");
  CHECK(Between(table, "<tbody>", "</tbody>") ==
        ListRow("Thu 1 Jan",
                "in use 08:00 to 12:00, 13:00 to 24:00; asleep 12:00 to 13:00; no record 00:00 to "
                "08:00") +
            ListRow("Fri 2 Jan", "in use 00:00 to 01:00; no record 01:00 to 24:00"));
}

TEST_CASE("days without stretches are there, and a week begins on Monday") {
  const std::string figure = DayStrips("", {kKinds, {}, SimTime(3, 0), 2});
  CHECK(CountOf("aria-label=\"no record 24.0 hours\"", figure) == 2);
  CHECK(Contains(figure, "<tr class=\"day\"><th scope=\"row\">Sun 4 Jan</th>"));
  CHECK(Contains(figure, "<tr class=\"monday\"><th scope=\"row\">Mon 5 Jan</th>"));
}

TEST_CASE("what lies outside the days is left out") {
  const std::vector<Stretch> stretches = {{SimTime(0, 0), SimTime(1, 0), 0},
                                          {SimTime(2, 0), SimTime(3, 0), 0}};
  const std::string figure = DayStrips("", {kKinds, stretches, SimTime(1, 0), 1});
  CHECK(CountOf("title=", figure) == 1);
  CHECK(Contains(figure, "title=\"no record, 00:00 to 24:00\""));
}

}  // namespace dozewell::report
