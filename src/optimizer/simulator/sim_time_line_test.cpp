#include "optimizer/simulator/sim_time_line.h"

#include <doctest/doctest.h>

namespace dozewell {
namespace {

Outcomes Count(const SimTimeLine& timeLine) {
  Outcomes outcomes;
  CountOutcomes(timeLine, outcomes);
  return outcomes;
}

}  // namespace

TEST_CASE("sleep and wake-backs count as time asleep, both hibernations as time hibernated") {
  using enum SimState;
  CHECK(
      Count({{0, Asleep}, {10, PredictedHibernation}, {110, PredictedWakeBack}, {1110, Active}}) ==
      Outcomes{1010, 100, 1, 0});
  CHECK(Count({{0, Asleep}, {10, Hibernating}, {110, Active}}) == Outcomes{10, 100, 0, 1});
  CHECK(Count({{0, PredictedHibernation}, {7, Active}}) == Outcomes{0, 7, 0, 1});
}

TEST_CASE("use and limbo count for nothing, and leaving sleep for limbo is no resume") {
  using enum SimState;
  CHECK(Count({{0, Active},
               {10, Limbo},
               {30, Asleep},
               {70, Limbo},
               {150, Hibernating},
               {310, Limbo},
               {1000, Active}}) == Outcomes{40, 160, 0, 0});
}

TEST_CASE("the state that the last entry begins counts for nothing") {
  using enum SimState;
  CHECK(Count({}) == Outcomes{});
  CHECK(Count({{5, Asleep}}) == Outcomes{});
  CHECK(Count({{5, Active}, {6, Asleep}}) == Outcomes{});
}

TEST_CASE("counts are added to those of earlier time lines") {
  using enum SimState;
  Outcomes outcomes = {1, 2, 3, 4};
  CountOutcomes({{0, Asleep}, {10, Active}, {20, Asleep}, {30, Hibernating}, {70, Active}},
                outcomes);
  CHECK(outcomes == Outcomes{21, 42, 4, 5});
}

}  // namespace dozewell
