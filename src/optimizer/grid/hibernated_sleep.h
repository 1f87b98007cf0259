#ifndef DOZEWELL_OPTIMIZER_GRID_HIBERNATED_SLEEP_H_
#define DOZEWELL_OPTIMIZER_GRID_HIBERNATED_SLEEP_H_

#include "optimizer/grid/observed_history.h"
#include "optimizer/grid/outcome_table.h"
#include "optimizer/grid/slot_search.h"
#include "optimizer/grid/thresholds.h"

namespace dozewell {

// Adds to the table, for each pair of thresholds, the whole outcomes of a sleep with recorded
// hibernations. There a prediction does not only move a part of the sleep: it decides what the
// records after it do. So the sleep is replayed once for each range of pairs that predict the same.
// `start` stands before the slots after the sleep's start.
void CountHibernatedSleep(const ObservedSleep& sleep, const SlotCursor& start,
                          const Thresholds& thresholds, OutcomeTable& table);

}  // namespace dozewell

#endif  // DOZEWELL_OPTIMIZER_GRID_HIBERNATED_SLEEP_H_
