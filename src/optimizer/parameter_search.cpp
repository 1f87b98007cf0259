#include "optimizer/parameter_search.h"

#include <cstddef>

#include "base/numbers.h"
#include "optimizer/best_set.h"
#include "optimizer/grid/grid_simulator.h"
#include "optimizer/simulator/stop_request.h"

namespace dozewell {
namespace {

// All scores are in single precision: with more precision other sets would win.
struct Shares {
  float sleep;      // of resumes from sleep among all resumes
  float hibernate;  // of time hibernated in all time asleep or hibernated
};

Shares SharesOf(const Outcomes& outcomes) {
  const int32_t resumes =
      Wrap32(int64_t{outcomes.resumesFromSleep} + outcomes.resumesFromHibernate);
  const int64_t seconds = WrapAdd64(outcomes.hibernateSeconds, outcomes.sleepSeconds);
  return {static_cast<float>(outcomes.resumesFromSleep) / static_cast<float>(resumes),
          static_cast<float>(outcomes.hibernateSeconds) / static_cast<float>(seconds)};
}

// A scoring weight and the best set so far.
class Contest {
 public:
  explicit Contest(int32_t weight)
      : weight_(static_cast<float>(weight)),
        complement_(static_cast<float>(Wrap32(100 - int64_t{weight}))) {}

  float ScoreOf(const Shares& shares) const {
    return weight_ * shares.sleep + complement_ * shares.hibernate;
  }

  // A score that is not a number never wins.
  void Enter(uint64_t position, const Outcomes& outcomes, const Shares& shares) {
    const float score = ScoreOf(shares);
    if (score > bestScore_ || (score == bestScore_ && (!best_ || position > *best_))) {
      bestScore_ = score;
      best_ = position;
      outcomes_ = outcomes;
    }
  }

  BestSet Result(size_t index, const ParameterGrid& grid, const Shares& baselineShares) const {
    BestSet result = {BestSetName(index), kNoBestSet, bestScore_, ScoreOf(baselineShares)};
    if (bestScore_ >= result.baseline) {
      NativeSimulatorConfigurations set;
      if (best_) {
        set = ConfigurationsOf(grid.SetAt(*best_));
        result.outcomes = outcomes_;
      }
      result.value = BestSetText(set);
    }
    return result;
  }

 private:
  float weight_;
  float complement_;
  float bestScore_ = 0.0F;
  std::optional<uint64_t> best_;  // position in the grid
  Outcomes outcomes_;             // with the best set
};

}  // namespace

std::optional<std::vector<BestSet>> SearchParameters(std::span<const HistoryRecord> history,
                                                     const Outcomes& baseline,
                                                     const ParameterGrid& grid,
                                                     const std::vector<int32_t>& scoringWeights,
                                                     const SetVisitor& visit) {
  std::vector<Contest> contests(scoringWeights.begin(), scoringWeights.end());
  const SetVisitor enter = [&](uint64_t position, const Outcomes& outcomes) {
    if (visit) visit(position, outcomes);
    const Shares shares = SharesOf(outcomes);
    for (Contest& contest : contests) contest.Enter(position, outcomes, shares);
  };
  if (!GridSimulator(grid, history).Simulate(enter)) SimulateEachSet(grid, history, enter);
  if (OptimizerStopRequested) return std::nullopt;

  const Shares baselineShares = SharesOf(baseline);
  std::vector<BestSet> results;
  results.reserve(contests.size());
  for (const Contest& contest : contests) {
    results.push_back(contest.Result(results.size(), grid, baselineShares));
  }
  return results;
}

}  // namespace dozewell
