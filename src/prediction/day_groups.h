#ifndef DOZEWELL_PREDICTION_DAY_GROUPS_H_
#define DOZEWELL_PREDICTION_DAY_GROUPS_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "prediction/cycle_shape.h"
#include "prediction/slot_probability.h"
#include "prediction/tracker_data.h"

namespace dozewell {

// The day grouping with a bit for each day of the week.
constexpr int32_t kEveryDay = (1 << kDaysInWeek) - 1;

// Two groups of days of the week whose observations of one time of day count together.
class DayGroups {
 public:
  // Bit i of `dayGrouping` is the group of day i. Day 0 of the cycle is a Thursday.
  explicit DayGroups(int32_t dayGrouping);

  // False when each slot counts alone: for 0 and for kEveryDay, but not for other groupings that
  // put all days into one group.
  bool PoolDays() const { return poolDays_; }
  // 0 or 1 for a day of the cycle, 0 to 6.
  int GroupOf(int day) const { return groupOfDay_[static_cast<size_t>(day)]; }

  // The observations that count for each day of the week at one time of day, `timeOfDay` slots
  // after midnight. With pooled days the last two are those of the nearest days of the group before
  // it that have one, cyclically, with the day itself as the farthest. Counts and sums are added as
  // they stand, kNone included, so a day without older observations takes one off both.
  std::array<Observations, kDaysInWeek> Pool(const SlotRecord* slots, int slotsPerDay,
                                             int timeOfDay) const;
  // The same for one slot of the cycle.
  Observations PoolSlot(const SlotRecord* slots, int slotsPerDay, int slot) const;

 private:
  struct Group {
    size_t count = 0;
    std::array<int, kDaysInWeek> days = {};
  };

  // The days of a day's group, from the one before it backwards to itself. None where no days are
  // pooled.
  std::span<const int> DaysBefore(int day) const {
    const Group& group = daysBefore_[static_cast<size_t>(day)];
    return std::span(group.days).first(group.count);
  }

  bool poolDays_;
  std::array<int, kDaysInWeek> groupOfDay_;
  std::array<Group, kDaysInWeek> daysBefore_;
};

}  // namespace dozewell

#endif  // DOZEWELL_PREDICTION_DAY_GROUPS_H_
