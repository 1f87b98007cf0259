#include "report/past_section.h"

#include <doctest/doctest.h>

#include <limits>

#include "base/wall_clock.h"
#include "support/sim_days.h"
#include "support/text_parts.h"

namespace dozewell::report {

TEST_CASE("a stretch lasts from each entry to the next") {
  const SimTimeLine timeLine = {{SimTime(0, 8), SimState::Active},
                                {SimTime(0, 12), SimState::Asleep},
                                {SimTime(0, 13), SimState::PredictedHibernation},
                                {SimTime(0, 14), SimState::PredictedWakeBack},
                                {SimTime(0, 15), SimState::Hibernating},
                                {SimTime(0, 16), SimState::Limbo},
                                {SimTime(0, 17), SimState::Active}};
  CHECK(PastStretches(timeLine) == std::vector<Stretch>{{SimTime(0, 8), SimTime(0, 12), 0},
                                                        {SimTime(0, 12), SimTime(0, 13), 1},
                                                        {SimTime(0, 13), SimTime(0, 14), 2},
                                                        {SimTime(0, 14), SimTime(0, 15), 3},
                                                        {SimTime(0, 15), SimTime(0, 16), 2}});
}

TEST_CASE("times beyond the calendar count as its ends") {
  constexpr int64_t kLowest = std::numeric_limits<int64_t>::min();
  constexpr int64_t kHighest = std::numeric_limits<int64_t>::max();
  const SimTimeLine timeLine = {{kLowest, SimState::Active},
                                {-1, SimState::Asleep},
                                {3600, SimState::Active},
                                {kHighest - 1, SimState::Asleep},
                                {kHighest, SimState::Active}};
  CHECK(PastStretches(timeLine) == std::vector<Stretch>{{0, 3600, 1}, {3600, kLastSecond, 0}});
  CHECK(Contains(PastSection(timeLine).html, "Wed 31 Dec"));
}

TEST_CASE("at most the last 60 days are drawn, and the page says of how many") {
  SimTimeLine timeLine;
  for (int day = 0; day < 70; ++day) {
    timeLine.push_back({SimTime(day, 8), SimState::Active});
    timeLine.push_back({SimTime(day, 20), SimState::Asleep});
  }
  const std::string section = PastSection(timeLine).html;
  CHECK(CountOf("<div class=\"strip\"", section) == 60);
  // Day 69 is the last; the time line ends with it.
  CHECK(Between(section, "<tbody>", "</th>") == "<tr class=\"day\"><th scope=\"row\">Sun 11 Jan");
  CHECK(Contains(section, "Wed 11 Mar</th>"));
  CHECK_FALSE(Contains(section, "Thu 12 Mar</th>"));
  CHECK(Contains(section, "Shown: the last 60 of 70 days."));
  CHECK(CountOf("<th scope=\"row\">Wed 11 Mar</th><td>in use 08:00 to 20:00", section) == 1);
}

TEST_CASE("a time line that ends at midnight draws no day after it") {
  const std::string section =
      PastSection({{SimTime(0, 8), SimState::Active}, {SimTime(1, 0), SimState::Asleep}}).html;
  CHECK(CountOf("<div class=\"strip\"", section) == 1);
  CHECK(Contains(section, "Shown: all of 1 day."));
}

TEST_CASE("the page says that a history is too short") {
  CHECK(Contains(PastSection({}).html, ">The history is too short to replay.</p>"));
  CHECK(Contains(PastSection({{SimTime(0, 8), SimState::Active}}).html,
                 ">The history is too short to replay.</p>"));
}

}  // namespace dozewell::report
