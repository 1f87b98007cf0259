#ifndef DOZEWELL_OPTIMIZER_SIMULATOR_SIMULATE_EACH_SET_H_
#define DOZEWELL_OPTIMIZER_SIMULATOR_SIMULATE_EACH_SET_H_

#include <cstdint>
#include <functional>
#include <span>

#include "optimizer/simulator/parameter_grid.h"
#include "optimizer/simulator/sim_time_line.h"
#include "prediction/history_file.h"

namespace dozewell {

// Receives the outcomes of a set of the grid, which is named by its position. It is called once for
// each set, in any order.
using SetVisitor = std::function<void(uint64_t position, const Outcomes& outcomes)>;

// Gives what SimulatePredictor and CountOutcomes give for each set of a grid, or throws what they
// throw. Returns early at a stop request.
void SimulateEachSet(const ParameterGrid& grid, std::span<const HistoryRecord> history,
                     const SetVisitor& visit);

}  // namespace dozewell

#endif  // DOZEWELL_OPTIMIZER_SIMULATOR_SIMULATE_EACH_SET_H_
