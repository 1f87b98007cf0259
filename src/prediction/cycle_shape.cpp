#include "prediction/cycle_shape.h"

#include <limits>

#include "base/numbers.h"
#include "prediction/configurations.h"
#include "prediction/tracker_data.h"

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

CycleShape ReadCycleShape(IConfigurations& configuration) {
  CycleShape shape;
  shape.daysInCycle = ReadPredictorNumber(configuration, kDaysInCycleName, kNone);
  shape.minutesInDay = ReadPredictorNumber(configuration, kMinutesInDayName, kNone);
  shape.minutesPerSlot = static_cast<int32_t>(configuration.GetTimeResolution());
  return shape;
}

}  // namespace dozewell
