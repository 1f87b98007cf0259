#ifndef DOZEWELL_OPTIMIZER_PARAMETER_RANGES_H_
#define DOZEWELL_OPTIMIZER_PARAMETER_RANGES_H_

#include <cstdint>
#include <vector>

#include "optimizer/simulator/parameter_grid.h"
#include "prediction/configurations.h"

namespace dozewell {

// Candidate values of each parameter, in the order in which they are tried.
struct ParameterRanges {
  std::vector<int32_t> strengthHigh;
  std::vector<int32_t> strengthLow;
  std::vector<int32_t> firstLastWeight;
  std::vector<int32_t> secondLastWeight;
  std::vector<int32_t> dayGrouping;
};

ParameterRanges ReadParameterRanges(IConfigurations& configuration);

// Pairs a high strength with each low one that is not greater, outermost first, and a first weight
// with each second one that leaves something of 100 to the third. A stop request leaves the grid
// unfinished.
ParameterGrid BuildParameterGrid(const ParameterRanges& ranges);

}  // namespace dozewell

#endif  // DOZEWELL_OPTIMIZER_PARAMETER_RANGES_H_
