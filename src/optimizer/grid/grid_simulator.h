#ifndef DOZEWELL_OPTIMIZER_GRID_GRID_SIMULATOR_H_
#define DOZEWELL_OPTIMIZER_GRID_GRID_SIMULATOR_H_

#include <span>

#include "optimizer/simulator/parameter_grid.h"
#include "optimizer/simulator/simulate_each_set.h"
#include "prediction/history_file.h"

namespace dozewell {

// Gives what SimulateEachSet gives, for the sets of a whole grid at once, of which most share most
// of the work: what is learnt does not depend on the parameters, a slot's probability only on
// weights and day grouping, and of the thresholds only matters which of them it crosses.
class GridSimulator {
 public:
  // Both must outlive it.
  GridSimulator(const ParameterGrid& grid, std::span<const HistoryRecord> history)
      : grid_(grid), history_(history) {}

  // False, with no set visited, where sets may not share what is learnt or may throw. Returns early
  // at a stop request.
  bool Simulate(const SetVisitor& visit) const;

 private:
  const ParameterGrid& grid_;
  std::span<const HistoryRecord> history_;
};

}  // namespace dozewell

#endif  // DOZEWELL_OPTIMIZER_GRID_GRID_SIMULATOR_H_
