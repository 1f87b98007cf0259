#ifndef DOZEWELL_PREDICTION_SLOT_POOL_H_
#define DOZEWELL_PREDICTION_SLOT_POOL_H_

#include <array>
#include <cstddef>

#include "prediction/day_groups.h"
#include "prediction/slot_probability.h"
#include "prediction/tracker_data.h"

namespace dozewell {

// Pools the observations of one time of day over the days of a group, in a cycle of a week.
class SlotPool {
 public:
  SlotPool(const DayGroups& dayGroups, int slotsPerDay);

  // The observations that count for a slot of the given day, which is one of the cycle's slots in a
  // row. The last two are those of the nearest days of the group before it that have one,
  // cyclically, with the day itself as the farthest. Counts and sums are added as they stand, kNone
  // included, so a day without older observations takes one off both. They are the slot's own where
  // no days are pooled, or none of the group has a last one.
  Observations At(const SlotRecord* slot, int day) const;

 private:
  // For each day the distances, in slots, to the days of its group: from the one before it
  // backwards to itself. None where no days are pooled.
  struct DaysBefore {
    size_t count = 0;
    std::array<int, kDaysInWeek> distances = {};
  };
  std::array<DaysBefore, kDaysInWeek> daysBefore_;
};

}  // namespace dozewell

#endif  // DOZEWELL_PREDICTION_SLOT_POOL_H_
