#ifndef DOZEWELL_PREDICTION_SLOT_PROBABILITY_H_
#define DOZEWELL_PREDICTION_SLOT_PROBABILITY_H_

#include <array>
#include <cstddef>
#include <cstdint>

#include "prediction/tracker_data.h"

namespace dozewell {

constexpr int kDaysInWeek = 7;

// What a slot's probability is estimated from: the slot's own observations, or those of the same
// time of day on every day of its group.
struct Observations {
  int32_t count;
  int32_t sum;
  int32_t secondLast;
  int32_t last;

  bool operator==(const Observations&) const = default;
};

// The shares of the last, the second-last and the older observations; they sum to 1.
struct ObservationWeights {
  float firstLast = 0.0F;
  float secondLast = 0.0F;
  float agregation = 0.0F;
};

// The probability that these observations give, or kUnknownProbability without any. All in 32-bit
// floats; a division by zero gives what IEEE 754 says.
float EstimateProbability(const Observations& observations, const ObservationWeights& weights);

Observations ObservationsOf(const SlotRecord& slot);

// Two groups of days of the week whose observations of one time of day count together.
class DayGroups {
 public:
  // Bit i of `dayGrouping` is the group of day i. Day 0 of the cycle is a Thursday.
  explicit DayGroups(int32_t dayGrouping);

  // 0 or 1 for a day of the cycle, 0 to 6.
  int GroupOf(int day) const { return groupOfDay_[static_cast<size_t>(day)]; }

  // Pools the observations of one time of day, `timeOfDay` slots after midnight, for each day of
  // the week: the last two are those of the nearest days of the group before it that have one,
  // cyclically, with the day itself as the farthest. Counts and sums are added as they stand, kNone
  // included, so a day without older observations takes one off both.
  std::array<Observations, kDaysInWeek> Pool(const SlotRecord* slots, int slotsPerDay,
                                             int timeOfDay) const;

 private:
  std::array<int, kDaysInWeek> groupOfDay_;
  // For each day the days of its group, from the one before it backwards to itself.
  std::array<std::array<int, kDaysInWeek>, kDaysInWeek> daysBefore_;
  std::array<int, 2> groupSize_{};
};

}  // namespace dozewell

#endif  // DOZEWELL_PREDICTION_SLOT_PROBABILITY_H_
