#include "optimizer/grid/slot_pool.h"

#include <algorithm>

namespace dozewell {
namespace {

constexpr int32_t kAllDays = 127;

// Each slot for itself.
constexpr bool PoolsNothing(int32_t dayGrouping) {
  return dayGrouping == 0 || dayGrouping == kAllDays;
}

}  // namespace

SlotPool::SlotPool(int32_t dayGrouping) {
  if (PoolsNothing(dayGrouping)) return;
  const DayGroups groups(dayGrouping);
  for (int day = 0; day < kDaysInWeek; ++day) {
    DaysBefore& before = daysBefore_[static_cast<size_t>(day)];
    for (int back = 1; back <= kDaysInWeek; ++back) {
      const int other = (day + kDaysInWeek - back) % kDaysInWeek;
      if (groups.GroupOf(other) != groups.GroupOf(day)) continue;
      before.distances[before.count++] = (other - day) * kSimulatedSlotsPerDay;
    }
  }
}

Observations SlotPool::At(const SlotRecord* slots, int slot) const {
  const DaysBefore& before = daysBefore_[static_cast<size_t>(slot / kSimulatedSlotsPerDay)];
  uint32_t count = 0;
  uint32_t sum = 0;
  for (size_t i = 0; i < before.count; ++i) {
    const SlotRecord& other = slots[slot + before.distances[i]];
    count += static_cast<uint32_t>(other.count);
    sum += static_cast<uint32_t>(other.sum);
  }
  Observations pooled = {static_cast<int32_t>(count), static_cast<int32_t>(sum), kNone, kNone};
  size_t next = 0;
  while (next < before.count && pooled.last == kNone) {
    pooled.last = slots[slot + before.distances[next++]].last;
  }
  while (next < before.count && pooled.secondLast == kNone) {
    pooled.secondLast = slots[slot + before.distances[next++]].last;
  }
  if (pooled.last == kNone) return ObservationsOf(slots[slot]);
  if (pooled.secondLast == kNone) pooled.secondLast = slots[slot].last;
  return pooled;
}

int32_t SlotPool::KeyOf(int32_t dayGrouping) {
  constexpr int32_t kOneGroup = kAllDays + 1;
  if (PoolsNothing(dayGrouping)) return 0;
  const int32_t days = dayGrouping & kAllDays;
  const int32_t smaller = std::min(days, kAllDays - days);
  return smaller == 0 ? kOneGroup : smaller;
}

}  // namespace dozewell
