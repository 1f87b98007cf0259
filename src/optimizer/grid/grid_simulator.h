#ifndef DOZEWELL_OPTIMIZER_GRID_GRID_SIMULATOR_H_
#define DOZEWELL_OPTIMIZER_GRID_GRID_SIMULATOR_H_

#include <span>

#include "optimizer/simulator/parameter_grid.h"
#include "optimizer/simulator/simulate_each_set.h"
#include "prediction/history_file.h"

namespace dozewell {

// The fast path of a search: gives what SimulateEachSet gives, for a whole grid at once.
//
// Sets share most of their work, in three steps. What a tracker learns from a history is the same
// for all of them: a simulated hibernation or wake-back is one more event in a sleep under way,
// from which it learns nothing. So the history is learnt once, and for each sleep the observations
// of the slots after its start are kept, as runs of slots in a row with equal observations. They
// depend only on the day grouping (observed_history.h), and some day groupings are alike
// (pooling_key.h). The weights then turn each run into a probability, for all thresholds together.
// Thresholds only decide which probabilities count as idle or in use. So one search through the
// runs finds when each of them hibernates a sleep and wakes it back (slot_search.h), and the change
// is added to the outcomes of a whole range of low and high thresholds (sleep_counter.h,
// outcome_table.h).
class GridSimulator {
 public:
  // Both must outlive the object.
  GridSimulator(const ParameterGrid& grid, std::span<const HistoryRecord> history)
      : grid_(grid), history_(history) {}

  // False, with no set visited, when sets may learn different things or may throw. Returns early
  // at a stop request.
  bool Simulate(const SetVisitor& visit) const;

 private:
  const ParameterGrid& grid_;
  std::span<const HistoryRecord> history_;
};

}  // namespace dozewell

#endif  // DOZEWELL_OPTIMIZER_GRID_GRID_SIMULATOR_H_
