#ifndef DOZEWELL_PREDICTION_DAY_GROUPS_H_
#define DOZEWELL_PREDICTION_DAY_GROUPS_H_

#include <cstdint>

#include "prediction/cycle_shape.h"

namespace dozewell {

// The day grouping with a bit for each day of the week.
constexpr int32_t kEveryDay = (1 << kDaysInWeek) - 1;

// Two groups of days of the week whose observations of one time of day count together.
class DayGroups {
 public:
  // Bit i of `dayGrouping` is the group of day i. Day 0 of the cycle is a Thursday.
  explicit DayGroups(int32_t dayGrouping) : dayGrouping_(dayGrouping) {}

  // False when each slot counts alone: for 0 and for kEveryDay, but not for other groupings that
  // put all days into one group.
  bool PoolDays() const { return dayGrouping_ != 0 && dayGrouping_ != kEveryDay; }
  // 0 or 1 for a day of the cycle, 0 to 6.
  int GroupOf(int day) const { return dayGrouping_ >> day & 1; }

 private:
  int32_t dayGrouping_;
};

}  // namespace dozewell

#endif  // DOZEWELL_PREDICTION_DAY_GROUPS_H_
