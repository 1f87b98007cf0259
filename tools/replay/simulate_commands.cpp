#include <vector>

#include "common/optimizer_inputs.h"
#include "common/problem_place.h"
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
  if (options.json) {
    Json json = OutcomesJson(outcomes);
    if (options.timeLine) json["timeline"] = TimeLineJson(timeLine);
    results.output = JsonLine(json);
  } else {
    if (options.timeLine) results.output = TimeLineText(timeLine);
    results.output += OutcomesText(outcomes);
  }
}

}  // namespace

void RunSimulate(const Options& options, Results& results) {
  const auto history = LoadSimulatedHistory(options.history.value(), results.warnings);
  FileConfigurations configuration(LoadSettings(options.settings), results.missingSettings);
  NativeSimulatorConfigurations parameters = SimulatedParameters(configuration);
  const auto place = [&] {
    return PlaceOfProblem(parameters, {configuration.Name(), *options.history});
  };
  const auto simulate = [&] { return SimulatePredictor(parameters, history.records); };
  Report(TellPlaceIn(history, place, simulate), options, results);
}

void RunBaseline(const Options& options, Results& results) {
  const auto history = LoadSimulatedHistory(options.history.value(), results.warnings);
  const int64_t timeoutSeconds = HibernateAfterSeconds(options.hibernateAfter);
  const auto place = [&] { return *options.history; };
  const auto simulate = [&] { return SimulateFixedTimeout(history.records, timeoutSeconds); };
  Report(TellPlaceIn(history, place, simulate), options, results);
}

}  // namespace dozewell::replay
