#include "optimizer/grid/grid_simulator.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <optional>
#include <vector>

#include "optimizer/grid/hibernated_sleep.h"
#include "optimizer/grid/observed_history.h"
#include "optimizer/grid/outcome_table.h"
#include "optimizer/grid/pooling_key.h"
#include "optimizer/grid/sleep_counter.h"
#include "optimizer/grid/slot_search.h"
#include "optimizer/grid/thresholds.h"
#include "optimizer/simulator/stop_request.h"

namespace dozewell {
namespace {

ObservationWeights Normalised(const WeightTriple& weights) {
  return NormalisedWeights(weights.firstLast, weights.secondLast, weights.agregation);
}

// The probability of each run of slots. Does what EstimateProbability does, written so that the
// compiler handles several runs at a time.
void Estimate(const ObservedSlots& slots, const ObservationWeights& weights,
              std::vector<float>& probabilities) {
  probabilities.resize(slots.end.size());
  for (size_t i = 0; i < probabilities.size(); ++i) {
    probabilities[i] = slots.last[i] * weights.firstLast +
                       slots.secondLast[i] * weights.secondLast +
                       slots.older[i] * weights.agregation;
  }
  for (const auto& [run, observations] : slots.incomplete) {
    probabilities[run] = EstimateProbability(observations, weights);
  }
}

// The outcomes of the sleeps without any prediction. Those with recorded hibernations are counted
// as a whole later.
Outcomes AsleepThroughout(const std::vector<ObservedSleep>& sleeps) {
  Outcomes outcomes;
  for (const ObservedSleep& sleep : sleeps) {
    if (!sleep.resume || !sleep.recorded.empty()) continue;
    outcomes.sleepSeconds += *sleep.resume - sleep.start;
    ++outcomes.resumesFromSleep;
  }
  return outcomes;
}

OutcomeTable CountSleeps(const std::vector<ObservedSleep>& sleeps, const ObservedSlots& slots,
                         const std::vector<float>& probabilities, const Thresholds& thresholds,
                         const Outcomes& asleepThroughout) {
  OutcomeTable table(thresholds.lows.size(), thresholds.highs.size());
  table.Add(thresholds.AllLows(), thresholds.AllHighs(), asleepThroughout);
  for (size_t i = 0; i < sleeps.size(); ++i) {
    const size_t first = slots.firstRun[i];
    const size_t count = slots.firstRun[i + 1] - first;
    const SlotCursor start(std::span(slots.end).subspan(first, count),
                           std::span(probabilities).subspan(first, count));
    if (sleeps[i].recorded.empty()) {
      CountPredictions(sleeps[i], start, thresholds, table);
    } else {
      CountHibernatedSleep(sleeps[i], start, thresholds, table);
    }
  }
  table.Finish();
  return table;
}

bool MayThrow(const WeightTriple& weights) {
  return weights.firstLast == kNone || weights.secondLast == kNone || weights.agregation == kNone;
}

}  // namespace

bool GridSimulator::Simulate(const SetVisitor& visit) const {
  if (grid_.Size() == 0) return true;
  if (std::any_of(grid_.weights.begin(), grid_.weights.end(), MayThrow)) return false;
  std::map<int32_t, std::vector<size_t>> groupingsByKey;
  for (size_t i = 0; i < grid_.dayGroupings.size(); ++i) {
    groupingsByKey[PoolingKeyOf(grid_.dayGroupings[i])].push_back(i);
  }
  std::vector<int32_t> keys;
  keys.reserve(groupingsByKey.size());
  for (const auto& [key, groupings] : groupingsByKey) keys.push_back(key);
  const std::optional<ObservedHistory> observed = ObserveHistory(history_, keys);
  if (!observed) return false;

  const Thresholds thresholds(grid_.strengths);
  const Outcomes asleepThroughout = AsleepThroughout(observed->sleeps);
  std::vector<float> probabilities;
  auto slots = observed->slots.begin();
  for (const auto& [key, groupings] : groupingsByKey) {
    for (size_t weights = 0; weights < grid_.weights.size(); ++weights) {
      Estimate(*slots, Normalised(grid_.weights[weights]), probabilities);
      const OutcomeTable table =
          CountSleeps(observed->sleeps, *slots, probabilities, thresholds, asleepThroughout);
      for (size_t pair = 0; pair < thresholds.pairs.size(); ++pair) {
        if (OptimizerStopRequested) return true;
        const auto [low, high] = thresholds.pairs[pair];
        for (const size_t grouping : groupings) {
          visit(grid_.PositionOf(pair, weights, grouping), table.At(low, high));
        }
      }
    }
    ++slots;
  }
  return true;
}

}  // namespace dozewell
