#ifndef DOZEWELL_OPTIMIZER_SIMULATOR_PARAMETER_GRID_H_
#define DOZEWELL_OPTIMIZER_SIMULATOR_PARAMETER_GRID_H_

#include <cstddef>
#include <cstdint>
#include <vector>

#include "optimizer/simulator/native_simulator_configurations.h"

namespace dozewell {

// What a set holds besides its day grouping.
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

// A candidate: a week's cycle and these numbers.
struct ParameterSet {
  StrengthPair strengths;
  WeightTriple weights;
  int32_t dayGrouping;

  bool operator==(const ParameterSet&) const = default;
};

// The set's numbers as the texts that a simulation reads.
NativeSimulatorConfigurations ConfigurationsOf(const ParameterSet& set);

// The sets to try, as the product that they are: for each strength pair every weight triple, and
// for each of those every day grouping. A set is known by its position in that order; no set is
// held on its own, so that a grid of any size fits.
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
