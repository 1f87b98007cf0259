#include <string>
#include <vector>

#include "common/optimizer_inputs.h"
#include "common/option_text.h"
#include "common/problem_place.h"
#include "common/simulated_parameters.h"
#include "common/simulated_rates.h"
#include "optimizer/simulator/simulator.h"
#include "replay/commands.h"
#include "replay/outcomes_text.h"
#include "replay/predictor_option.h"
#include "replay/taken_settings.h"

namespace dozewell::replay {
namespace {

void Report(const SimTimeLine& timeLine, const Options& options, Results& results) {
  Outcomes outcomes;
  CountOutcomes(timeLine, outcomes);
  if (options.json) {
    Json json = OutcomesJson(outcomes);
    if (options.timeLine) json["timeline"] = TimeLineJson(timeLine);
    results.output = IdentifiedLine(json, results.identity);
  } else {
    if (options.timeLine) results.output = TimeLineText(timeLine);
    results.output += OutcomesText(outcomes);
  }
}

}  // namespace

void RunSimulate(const Options& options, Results& results) {
  const bool isOfRates = IsOfRates(options);
  const auto history = LoadSimulatedHistory(options.history.value(), results.warnings);
  results.identity.time = TimeOfLast(history.records);
  FileConfigurations configuration = TakeSettings(options, results);
  if (isOfRates) {
    const auto place = [&] { return *options.history; };
    const auto simulate = [&] {
      return SimulateRates(configuration, history.records, !options.noWake);
    };
    Report(TellPlaceIn(history, place, simulate), options, results);
    return;
  }
  NativeSimulatorConfigurations parameters = SimulatedParameters(configuration);
  const auto place = [&] {
    return PlaceOfProblem(parameters, {configuration.Name(), *options.history});
  };
  const auto simulate = [&] { return SimulatePredictor(parameters, history.records); };
  Report(TellPlaceIn(history, place, simulate), options, results);
}

void RunBaseline(const Options& options, Results& results) {
  const auto history = LoadSimulatedHistory(options.history.value(), results.warnings);
  results.identity.time = TimeOfLast(history.records);
  const int64_t timeoutSeconds = HibernateAfterSeconds(options.hibernateAfter);
  const auto place = [&] { return *options.history; };
  const auto simulate = [&] { return SimulateFixedTimeout(history.records, timeoutSeconds); };
  Report(TellPlaceIn(history, place, simulate), options, results);
}

}  // namespace dozewell::replay
