#ifndef DOZEWELL_OPTIMIZER_PARAMETER_RANGES_H_
#define DOZEWELL_OPTIMIZER_PARAMETER_RANGES_H_

#include <cstdint>
#include <vector>

#include "optimizer/simulator/parameter_grid.h"
#include "prediction/configurations.h"

namespace dozewell {

// The candidate values of each parameter, in the order in which they are tried.
struct ParameterRanges {
  std::vector<int32_t> strengthHigh;
  std::vector<int32_t> strengthLow;
  std::vector<int32_t> firstLastWeight;
  std::vector<int32_t> secondLastWeight;
  std::vector<int32_t> dayGrouping;
};

ParameterRanges ReadParameterRanges(IConfigurations& configuration);

// Pairs each high strength with the low ones that are not greater, and each first weight with the
// second ones that leave more than 0 of 100 for the third. A stop request leaves the grid
// unfinished.
ParameterGrid BuildParameterGrid(const ParameterRanges& ranges);

}  // namespace dozewell

#endif  // DOZEWELL_OPTIMIZER_PARAMETER_RANGES_H_
