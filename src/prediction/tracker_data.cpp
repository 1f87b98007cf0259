#include "prediction/tracker_data.h"

#include <cstring>
#include <new>

namespace dozewell {

TrackerDataPtr CopyOf(const TrackerData& data) {
  const auto size = static_cast<size_t>(TrackerDataSize(data.slotCount));
  TrackerDataPtr copy(static_cast<TrackerData*>(std::malloc(size)));
  if (!copy) throw std::bad_alloc();
  std::memcpy(static_cast<void*>(copy.get()), &data, size);
  return copy;
}

CycleShape ShapeOf(const TrackerData& data) {
  return {data.daysInCycle, data.minutesInDay, data.minutesPerSlot};
}

}  // namespace dozewell
