#include "report/outlook_section.h"

#include <doctest/doctest.h>

#include "support/mornings.h"
#include "support/text_parts.h"

namespace dozewell::report {
namespace {

std::string SectionAt(fakes::Configurations& configuration, int days, const tm& now) {
  ArbitraryCycleProbabilityTracker tracker(&configuration);
  Learn(tracker, Mornings(days));
  return OutlookSection(tracker, now);
}

}  // namespace

TEST_CASE("seven days are drawn, ready until each idle stretch and idle until each use") {
  fakes::Configurations configuration = AllDaysAlike();
  const std::string section = SectionAt(configuration, 10, SimLocalTime(10, 9, 3));
  CHECK(CountOf("<div class=\"strip\"", section) == 7);
  const std::string today = Between(section, "Sun 11 Jan</th>", "</tr>");
  CHECK(CountOf("<i ", today) == 2);
  CHECK(Contains(today, "title=\"in use, or asleep and ready, 09:03 to 12:10\""));
  CHECK(Contains(today, "title=\"idle, hibernated, 12:10 to 24:00\""));
  const std::string last = Between(section, "Sat 17 Jan</th>", "</tr>");
  CHECK(Contains(last,
                 "aria-label=\"in use, or asleep and ready 4.2 hours, idle, hibernated 19.8 "
                 "hours\""));
}

TEST_CASE("the next idle stretches are listed") {
  fakes::Configurations configuration = AllDaysAlike();
  const std::string list = Between(SectionAt(configuration, 10, SimLocalTime(10, 9, 3)),
                                   "<table class=\"list\">", "</table>");
  CHECK(CountOf("<tr>", list) == 1 + 6);
  CHECK(Contains(list,
                 "<tr><td>Sun 11 Jan, 12:10</td><td>Mon 12 Jan, 08:00</td><td>19 h 50 min</td>"
                 "</tr>"));
  configuration.values["StrengthHigh"] = "101";
  CHECK(Contains(SectionAt(configuration, 10, SimLocalTime(10, 9, 3)),
                 "<tr><td>Sun 11 Jan, 12:10</td><td>not known</td><td>-</td></tr>"));
}

TEST_CASE("the page says that nothing is predicted") {
  fakes::Configurations configuration = AllDaysAlike();
  const std::string section = SectionAt(configuration, 0, SimLocalTime(10, 9, 3));
  CHECK(Contains(section, "<p>Nothing is predicted; the evidence above says why.</p>"));
  CHECK(CountOf("<table", section) == 0);
}

TEST_CASE("the days end with the calendar") {
  fakes::Configurations configuration = AllDaysAlike();
  tm lastDay;
  TmFromSeconds(kLastSecond - 43200, lastDay);
  CHECK(CountOf("<div class=\"strip\"", SectionAt(configuration, 10, lastDay)) == 1);
}

}  // namespace dozewell::report
