#ifndef DOZEWELL_OPTIMIZER_PARAMETER_SEARCH_H_
#define DOZEWELL_OPTIMIZER_PARAMETER_SEARCH_H_

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "optimizer/simulator/parameter_grid.h"
#include "optimizer/simulator/sim_time_line.h"
#include "optimizer/simulator/simulate_each_set.h"
#include "prediction/history_file.h"

namespace dozewell {

// The winner for one scoring weight.
struct BestSet {
  std::string name;   // of the value that it is stored as
  std::string value;  // the text that is stored
  float score;        // 0 when no set scored higher
  float baseline;     // the fixed timeout's score, which `score` has to reach
  // What the history comes to with the set; nothing when no set scored.
  std::optional<Outcomes> outcomes = {};
};

// Simulates every set of the grid and finds the best one for each scoring weight. A weight is the
// share of 100 for resumes from sleep; the rest is for time spent hibernated. Among sets of equal
// score the last in the grid wins. `visit` may be empty. No result after a stop request. Throws
// what a simulation throws.
std::optional<std::vector<BestSet>> SearchParameters(std::span<const HistoryRecord> history,
                                                     const Outcomes& baseline,
                                                     const ParameterGrid& grid,
                                                     const std::vector<int32_t>& scoringWeights,
                                                     const SetVisitor& visit = {});

}  // namespace dozewell

#endif  // DOZEWELL_OPTIMIZER_PARAMETER_SEARCH_H_
