#include "optimizer/simulator/simulate_each_set.h"

#include "optimizer/simulator/simulator.h"
#include "optimizer/simulator/stop_request.h"

namespace dozewell {

void SimulateEachSet(const ParameterGrid& grid, std::span<const HistoryRecord> history,
                     const SetVisitor& visit) {
  const uint64_t size = grid.Size();
  for (uint64_t position = 0; position < size && !OptimizerStopRequested; ++position) {
    NativeSimulatorConfigurations parameters = ConfigurationsOf(grid.SetAt(position));
    Outcomes outcomes;
    CountOutcomes(SimulatePredictor(parameters, history), outcomes);
    visit(position, outcomes);
  }
}

}  // namespace dozewell
