#ifndef DOZEWELL_TESTS_SUPPORT_TRACKER_DATA_H_
#define DOZEWELL_TESTS_SUPPORT_TRACKER_DATA_H_

#include <cstddef>
#include <cstring>

#include "prediction/arbitrary_cycle_probability_tracker.h"
#include "prediction/tracker_data.h"

namespace dozewell {

inline bool SameBytes(const TrackerData& a, const TrackerData& b) {
  return a.slotCount == b.slotCount &&
         std::memcmp(&a, &b, static_cast<size_t>(TrackerDataSize(a.slotCount))) == 0;
}

// The data of a tracker that has learnt nothing; tests fill it in.
inline TrackerDataPtr NewData(IConfigurations& configuration) {
  return CopyOf(*ArbitraryCycleProbabilityTracker(&configuration).GetData());
}

// Slots of a quarter of an hour, in a week.
constexpr int kSlotsPerDay = 96;
constexpr int kSlotsPerWeek = 7 * kSlotsPerDay;
constexpr SlotRecord kEmptySlot = {-1, -1, -1, -1, -1};

constexpr int Slot(int day, int hour, int minute = 0) {
  return day * kSlotsPerDay + hour * 4 + minute / 15;
}

}  // namespace dozewell

#endif  // DOZEWELL_TESTS_SUPPORT_TRACKER_DATA_H_
