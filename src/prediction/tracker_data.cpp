#include "prediction/tracker_data.h"

namespace dozewell {

CycleShape ShapeOf(const TrackerData& data) {
  return {data.daysInCycle, data.minutesInDay, data.minutesPerSlot};
}

}  // namespace dozewell
