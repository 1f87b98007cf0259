#include "common/comparison.h"

#include "common/clairvoyant.h"
#include "common/simulated_parameters.h"
#include "optimizer/best_set.h"
#include "optimizer/parameter_ranges.h"
#include "optimizer/simulator/simulator.h"
#include "settings/setting_names.h"

namespace dozewell {
namespace {

constexpr int64_t kComparedMinutes[] = {10, 30, 60, 180};

Outcomes OutcomesOf(const SimTimeLine& timeLine) {
  Outcomes outcomes;
  CountOutcomes(timeLine, outcomes);
  return outcomes;
}

// The outcomes once the service uses this result.
Outcomes Adopted(const BestSet& best, std::span<const HistoryRecord> history,
                 const Comparison& comparison) {
  if (best.value == kNoBestSet) return comparison.baseline;
  const std::optional<ParameterSet> set = SetOf(best);
  if (!set) return comparison.settings.outcomes;
  if (best.outcomes) return *best.outcomes;
  NativeSimulatorConfigurations parameters = ConfigurationsOf(*set);
  return OutcomesOf(SimulatePredictor(parameters, history));
}

}  // namespace

std::optional<ParameterSet> SetOf(const BestSet& best) {
  const BestSetApplication application = ReadBestSet(best.value);
  if (!application.parameters) return std::nullopt;
  const auto& [firstLast, secondLast, agregation, high, low, dayGrouping] = *application.parameters;
  return ParameterSet{{high, low}, {firstLast, secondLast, agregation}, dayGrouping};
}

Comparison Compare(std::span<const HistoryRecord> history, IConfigurations& configuration,
                   int64_t hibernateAfterSeconds) {
  Comparison comparison = {};
  for (const int64_t minutes : kComparedMinutes) {
    comparison.fixed.push_back({std::to_string(minutes) + " minutes", "",
                                OutcomesOf(SimulateFixedTimeout(history, minutes * 60)), minutes});
  }
  comparison.fixed.push_back({"never", "", OutcomesOf(SimulateFixedTimeout(history, 0)), 0});

  NativeSimulatorConfigurations parameters = SimulatedParameters(configuration);
  comparison.settings = {"settings", "", OutcomesOf(SimulatePredictor(parameters, history))};

  comparison.baseline = OutcomesOf(SimulateFixedTimeout(history, hibernateAfterSeconds));
  const ParameterGrid grid = BuildParameterGrid(ReadParameterRanges(configuration));
  comparison.sets = grid.Size();
  comparison.best = SearchParameters(history, comparison.baseline, grid,
                                     ReadPredictorNumbers(configuration, kScoringWeightsName))
                        .value();
  for (const BestSet& best : comparison.best) {
    comparison.adopted.push_back({best.name, best.value, Adopted(best, history, comparison)});
  }
  comparison.clairvoyant = {"clairvoyant", "", OutcomesOf(SimulateClairvoyant(history))};
  return comparison;
}

}  // namespace dozewell
