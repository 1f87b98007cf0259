#ifndef DOZEWELL_OPTIMIZER_GRID_THRESHOLDS_H_
#define DOZEWELL_OPTIMIZER_GRID_THRESHOLDS_H_

#include <cstddef>
#include <cstdint>
#include <vector>

#include "optimizer/grid/outcome_table.h"
#include "optimizer/simulator/parameter_grid.h"

namespace dozewell {

// The thresholds of a grid's strengths as the fractions that the tracker compares with, each once
// and in ascending order.
struct Thresholds {
  explicit Thresholds(const std::vector<StrengthPair>& strengths);

  std::vector<float> lows;
  std::vector<float> highs;

  // The indexes of the two thresholds of each strength pair.
  struct Pair {
    size_t low;
    size_t high;
  };
  std::vector<Pair> pairs;

  IndexRange AllLows() const { return {0, static_cast<uint32_t>(lows.size())}; }
  IndexRange AllHighs() const { return {0, static_cast<uint32_t>(highs.size())}; }
};

}  // namespace dozewell

#endif  // DOZEWELL_OPTIMIZER_GRID_THRESHOLDS_H_
