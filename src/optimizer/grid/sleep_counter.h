#ifndef DOZEWELL_OPTIMIZER_GRID_SLEEP_COUNTER_H_
#define DOZEWELL_OPTIMIZER_GRID_SLEEP_COUNTER_H_

#include "optimizer/grid/observed_history.h"
#include "optimizer/grid/outcome_table.h"
#include "optimizer/grid/slot_search.h"
#include "optimizer/grid/thresholds.h"

namespace dozewell {

// Adds to the table, for each pair of thresholds, how predictions change the outcomes of a sleep
// that is counted there as asleep throughout: by hibernating it and by waking it back to sleep.
// `start` stands before the slots after the sleep's start.
void CountPredictions(const ObservedSleep& sleep, const SlotCursor& start,
                      const Thresholds& thresholds, OutcomeTable& table);

}  // namespace dozewell

#endif  // DOZEWELL_OPTIMIZER_GRID_SLEEP_COUNTER_H_
