#ifndef DOZEWELL_OPTIMIZER_GRID_SLOT_POOL_H_
#define DOZEWELL_OPTIMIZER_GRID_SLOT_POOL_H_

#include <array>
#include <cstddef>
#include <cstdint>

#include "base/wall_clock.h"
#include "optimizer/simulator/native_simulator_configurations.h"
#include "prediction/slot_probability.h"
#include "prediction/tracker_data.h"

namespace dozewell {

// The cycle of every candidate: a week.
constexpr int64_t kSimulatedSlotSeconds = int64_t{kSimulatedTimeResolution} * 60;
constexpr int kSimulatedSlotsPerDay = static_cast<int>(kSecondsPerDay / kSimulatedSlotSeconds);
constexpr int kSimulatedSlots = kDaysInWeek * kSimulatedSlotsPerDay;

// The observations that count for a slot under a day grouping: its own, or those of its time of day
// on all days of its group, as the tracker pools them.
class SlotPool {
 public:
  explicit SlotPool(int32_t dayGrouping);

  Observations At(const SlotRecord* slots, int slot) const;

  // Day groupings of one key pool alike. The key is one of them itself.
  static int32_t KeyOf(int32_t dayGrouping);

 private:
  // For each day the distances in slots, from its midnight, of the midnights of its group: from the
  // day before it backwards to the day itself.
  struct DaysBefore {
    size_t count = 0;
    std::array<int, kDaysInWeek> distances = {};
  };
  std::array<DaysBefore, kDaysInWeek> daysBefore_;
};

}  // namespace dozewell

#endif  // DOZEWELL_OPTIMIZER_GRID_SLOT_POOL_H_
