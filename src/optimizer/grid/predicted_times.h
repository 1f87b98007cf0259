#ifndef DOZEWELL_OPTIMIZER_GRID_PREDICTED_TIMES_H_
#define DOZEWELL_OPTIMIZER_GRID_PREDICTED_TIMES_H_

#include <cstdint>

#include "optimizer/grid/observed_history.h"
#include "optimizer/grid/simulated_cycle.h"

namespace dozewell {

// When a slot after a sleep's start begins, in seconds; slot 0 is the one that it starts in.
inline int64_t SlotStart(const ObservedSleep& sleep, int32_t slot) {
  return sleep.slotStart + slot * kSimulatedSlotSeconds;
}

// The start of the slot, which predictions count from the sleep's start in whole minutes, rounded
// up.
inline int64_t IdleStart(const ObservedSleep& sleep, int32_t slot) {
  return sleep.start + (SlotStart(sleep, slot) - sleep.start + 59) / 60 * 60;
}

}  // namespace dozewell

#endif  // DOZEWELL_OPTIMIZER_GRID_PREDICTED_TIMES_H_
