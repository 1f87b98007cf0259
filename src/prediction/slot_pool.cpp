#include "prediction/slot_pool.h"

#include <cstdint>

namespace dozewell {

SlotPool::SlotPool(const DayGroups& dayGroups, int slotsPerDay) {
  if (!dayGroups.PoolDays()) return;
  for (int day = 0; day < kDaysInWeek; ++day) {
    DaysBefore& before = daysBefore_[static_cast<size_t>(day)];
    for (int back = 1; back <= kDaysInWeek; ++back) {
      const int other = (day + kDaysInWeek - back) % kDaysInWeek;
      if (dayGroups.GroupOf(other) != dayGroups.GroupOf(day)) continue;
      before.distances[before.count++] = (other - day) * slotsPerDay;
    }
  }
}

Observations SlotPool::At(const SlotRecord* slot, int day) const {
  const DaysBefore& before = daysBefore_[static_cast<size_t>(day)];
  uint32_t count = 0;
  uint32_t sum = 0;
  for (size_t i = 0; i < before.count; ++i) {
    const SlotRecord& other = slot[before.distances[i]];
    count += static_cast<uint32_t>(other.count);
    sum += static_cast<uint32_t>(other.sum);
  }
  Observations pooled = {static_cast<int32_t>(count), static_cast<int32_t>(sum), kNone, kNone};
  size_t next = 0;
  while (next < before.count && pooled.last == kNone) {
    pooled.last = slot[before.distances[next++]].last;
  }
  while (next < before.count && pooled.secondLast == kNone) {
    pooled.secondLast = slot[before.distances[next++]].last;
  }
  if (pooled.last == kNone) return ObservationsOf(*slot);
  if (pooled.secondLast == kNone) pooled.secondLast = slot->last;
  return pooled;
}

}  // namespace dozewell
