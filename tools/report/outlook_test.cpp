#include "report/outlook.h"

#include <doctest/doctest.h>

#include "support/mornings.h"

namespace dozewell::report {
namespace {

constexpr int kDays = 10;

}  // namespace

TEST_CASE("predictions go on from each next use to the next idle stretch") {
  fakes::Configurations configuration = AllDaysAlike();
  ArbitraryCycleProbabilityTracker tracker(&configuration);
  Learn(tracker, Mornings(kDays));
  CHECK(PredictIdleness(tracker, SimLocalTime(10, 9, 3), SimTime(13, 0)) ==
        std::vector<PredictedIdleness>{{SimTime(10, 12, 10), SimTime(11, 8, 0)},
                                       {SimTime(11, 12, 10), SimTime(12, 8, 0)},
                                       {SimTime(12, 12, 10), SimTime(13, 8, 0)}});
  // Within an idle stretch, the prediction begins with the next slot.
  CHECK(PredictIdleness(tracker, SimLocalTime(10, 20, 3), SimTime(11, 0)) ==
        std::vector<PredictedIdleness>{{SimTime(10, 20, 10), SimTime(11, 8, 0)}});
}

TEST_CASE("a stretch that begins at the end is not among them") {
  fakes::Configurations configuration = AllDaysAlike();
  ArbitraryCycleProbabilityTracker tracker(&configuration);
  Learn(tracker, Mornings(kDays));
  CHECK(PredictIdleness(tracker, SimLocalTime(10, 9, 3), SimTime(10, 12, 10)).empty());
  CHECK(PredictIdleness(tracker, SimLocalTime(10, 9, 3), SimTime(10, 12, 11)).size() == 1);
}

TEST_CASE("after a stretch without a next use nothing is predicted") {
  fakes::Configurations configuration = AllDaysAlike();
  configuration.values["StrengthHigh"] = "101";
  ArbitraryCycleProbabilityTracker tracker(&configuration);
  Learn(tracker, Mornings(kDays));
  CHECK(PredictIdleness(tracker, SimLocalTime(10, 9, 3), SimTime(13, 0)) ==
        std::vector<PredictedIdleness>{{SimTime(10, 12, 10), std::nullopt}});
}

TEST_CASE("a tracker that has learnt nothing predicts nothing") {
  fakes::Configurations configuration = AllDaysAlike();
  ArbitraryCycleProbabilityTracker tracker(&configuration);
  CHECK(PredictIdleness(tracker, SimLocalTime(10, 9, 3), SimTime(13, 0)).empty());
}

}  // namespace dozewell::report
