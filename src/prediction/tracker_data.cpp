#include "prediction/tracker_data.h"

#include <limits>

#include "base/numbers.h"

namespace dozewell {

int32_t CycleShape::SecondsPerSlot() const { return Wrap32(int64_t{minutesPerSlot} * 60); }

int32_t CycleShape::SecondsPerCycle() const {
  return Wrap32(int64_t{Wrap32(int64_t{daysInCycle} * minutesInDay)} * 60);
}

int32_t CycleShape::SlotCount() const {
  if (minutesPerSlot == 0) return 0;
  return Wrap32(int64_t{Wrap32(int64_t{minutesInDay} * daysInCycle)} / minutesPerSlot);
}

bool CycleShape::IsUsable() const {
  return SecondsPerSlot() > 0 && minutesPerSlot > 0 && SecondsPerCycle() != 0 && SlotCount() > 0 &&
         TrackerDataSize(SlotCount()) <= std::numeric_limits<int32_t>::max();
}

CycleShape ShapeOf(const TrackerData& data) {
  return {data.daysInCycle, data.minutesInDay, data.minutesPerSlot};
}

}  // namespace dozewell
