#include "report/outlook_figure.h"

#include <doctest/doctest.h>

#include "report/section.h"
#include "support/mornings.h"
#include "support/text_parts.h"

namespace dozewell::report {
namespace {

std::string FigureAt(fakes::Configurations& configuration, int days, const tm& now) {
  ArbitraryCycleProbabilityTracker tracker(&configuration);
  Learn(tracker, Mornings(days));
  return OutlookFigure(tracker, now);
}

}  // namespace

TEST_CASE("seven days are drawn, ready until each idle stretch and idle until each use") {
  fakes::Configurations configuration = AllDaysAlike();
  const std::string figure = FigureAt(configuration, 10, SimLocalTime(10, 9, 3));
  CHECK(CountOf("<div class=\"strip\"", figure) == 7);
  const std::string today = Between(figure, "Sun 11 Jan</th>", "</tr>");
  CHECK(CountOf("<i ", today) == 3);
  CHECK(Contains(today, "title=\"past, or not predicted, 00:00 to 09:03\""));
  CHECK(Contains(today, "title=\"ready, since use is likely, 09:03 to 12:10\""));
  CHECK(Contains(today, "title=\"hibernated, since it is not, 12:10 to 24:00\""));
  const std::string last = Between(figure, "Sat 17 Jan</th>", "</tr>");
  CHECK(Contains(last,
                 "aria-label=\"ready, since use is likely 4.2 hours, hibernated, since "
                 "it is not 19.8 hours\""));
}

TEST_CASE("all idle stretches are listed, and their number is told") {
  fakes::Configurations configuration = AllDaysAlike();
  const std::string figure = FigureAt(configuration, 10, SimLocalTime(10, 9, 3));
  const std::string list = Between(figure, "<table class=\"list\">", "</table>");
  CHECK(Contains(figure, "<summary>All 7 idle stretches of these days, in words</summary>"));
  CHECK(CountOf("<tr>", list) == 1 + 7);
  CHECK(Contains(list, ListRow("Sun 11 Jan, 12:10", "Mon 12 Jan, 08:00, after 19 h 50 min")));
  CHECK(Contains(list, ListRow("Sat 17 Jan, 12:10", "Sun 18 Jan, 08:00, after 19 h 50 min")));
  configuration.values["StrengthHigh"] = "101";
  const std::string only = FigureAt(configuration, 10, SimLocalTime(10, 9, 3));
  CHECK(Contains(only, "<summary>The only idle stretch of these days, in words</summary>"));
  CHECK(Contains(only, ListRow("Sun 11 Jan, 12:10", "use is not known")));
}

TEST_CASE("the page says that nothing is predicted") {
  fakes::Configurations configuration = AllDaysAlike();
  CHECK(FigureAt(configuration, 0, SimLocalTime(10, 9, 3)) ==
        "<p>Nothing is predicted for the days after it either.</p>");
}

TEST_CASE("the days end with the calendar") {
  fakes::Configurations configuration = AllDaysAlike();
  tm lastDay;
  TmFromSeconds(kLastSecond - 43200, lastDay);
  CHECK(CountOf("<div class=\"strip\"", FigureAt(configuration, 10, lastDay)) == 1);
}

}  // namespace dozewell::report
