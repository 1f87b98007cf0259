#ifndef DOZEWELL_OPTIMIZER_PARAMETER_RANGES_H_
#define DOZEWELL_OPTIMIZER_PARAMETER_RANGES_H_

#include <cstdint>
#include <vector>

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

}  // namespace dozewell

#endif  // DOZEWELL_OPTIMIZER_PARAMETER_RANGES_H_
