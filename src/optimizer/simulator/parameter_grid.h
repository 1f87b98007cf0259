#ifndef DOZEWELL_OPTIMIZER_SIMULATOR_PARAMETER_GRID_H_
#define DOZEWELL_OPTIMIZER_SIMULATOR_PARAMETER_GRID_H_

#include <cstddef>
#include <cstdint>
#include <vector>

#include "optimizer/simulator/native_simulator_configurations.h"

namespace dozewell {

// The numbers of a set besides its day grouping.
struct StrengthPair {
  int32_t high;
  int32_t low;

  bool operator==(const StrengthPair&) const = default;
};
struct WeightTriple {
  int32_t firstLast;
  int32_t secondLast;
  int32_t agregation;

  bool operator==(const WeightTriple&) const = default;
};

// A candidate. Its cycle is always a week.
struct ParameterSet {
  StrengthPair strengths;
  WeightTriple weights;
  int32_t dayGrouping;

  bool operator==(const ParameterSet&) const = default;
};

// The set's numbers as the texts that a simulation reads.
NativeSimulatorConfigurations ConfigurationsOf(const ParameterSet& set);

// The sets to try: for each strength pair all weight triples, and for each of those all day
// groupings. Only the three lists are held, so that a grid of any size fits in memory; a set is
// named by its position in that order.
struct ParameterGrid {
  std::vector<StrengthPair> strengths;
  std::vector<WeightTriple> weights;
  std::vector<int32_t> dayGroupings;

  uint64_t Size() const;
  uint64_t PositionOf(size_t strengthPair, size_t weightTriple, size_t dayGrouping) const;
  ParameterSet SetAt(uint64_t position) const;
};

}  // namespace dozewell

#endif  // DOZEWELL_OPTIMIZER_SIMULATOR_PARAMETER_GRID_H_
