#ifndef DOZEWELL_OPTIMIZER_GRID_SIMULATED_CYCLE_H_
#define DOZEWELL_OPTIMIZER_GRID_SIMULATED_CYCLE_H_

#include <cstdint>

#include "base/wall_clock.h"
#include "optimizer/simulator/native_simulator_configurations.h"
#include "prediction/cycle_shape.h"

namespace dozewell {

// The cycle of every candidate: a week.
constexpr CycleShape kSimulatedCycle = {kDaysInWeek, 24 * 60, kSimulatedTimeResolution};
constexpr int64_t kSimulatedSlotSeconds = int64_t{kSimulatedTimeResolution} * 60;
constexpr int kSimulatedSlotsPerDay = static_cast<int>(kSecondsPerDay / kSimulatedSlotSeconds);
constexpr int kSimulatedSlots = kDaysInWeek * kSimulatedSlotsPerDay;

}  // namespace dozewell

#endif  // DOZEWELL_OPTIMIZER_GRID_SIMULATED_CYCLE_H_
