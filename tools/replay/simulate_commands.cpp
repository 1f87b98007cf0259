#include <vector>

#include "common/optimizer_inputs.h"
#include "common/simulated_parameters.h"
#include "optimizer/simulator/simulator.h"
#include "replay/commands.h"
#include "replay/file_configurations.h"
#include "replay/outcomes_text.h"

namespace dozewell::replay {
namespace {

void Report(const SimTimeLine& timeLine, const Options& options, Results& results) {
  Outcomes outcomes;
  CountOutcomes(timeLine, outcomes);
  if (options.timeLine) results.output = TimeLineText(timeLine);
  results.output += options.json ? OutcomesJson(outcomes) + '\n' : OutcomesText(outcomes);
}

}  // namespace

void RunSimulate(const Options& options, Results& results) {
  const auto history = LoadOptimizerHistory(options.history.value(), results.warnings);
  FileConfigurations configuration(LoadSettings(options.settings));
  NativeSimulatorConfigurations parameters = SimulatedParameters(configuration);
  Report(SimulatePredictor(parameters, history), options, results);
}

void RunBaseline(const Options& options, Results& results) {
  const auto history = LoadOptimizerHistory(options.history.value(), results.warnings);
  const int64_t timeoutSeconds = HibernateAfterSeconds(options.hibernateAfter);
  Report(SimulateFixedTimeout(history, timeoutSeconds), options, results);
}

}  // namespace dozewell::replay
