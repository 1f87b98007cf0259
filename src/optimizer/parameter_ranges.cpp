#include "optimizer/parameter_ranges.h"

#include "prediction/configurations_impl.h"

namespace dozewell {

ParameterRanges ReadParameterRanges() {
  ParameterRanges ranges;
  ranges.strengthHigh = ParseIntList("StrengthHighRange");
  ranges.strengthLow = ParseIntList("StrengthLowRange");
  ranges.firstLastWeight = ParseIntList("FirstLastWeightRange");
  ranges.secondLastWeight = ParseIntList("SecondLastWeightRange");
  ranges.dayGrouping = ParseIntList("DayGroupingRange");
  return ranges;
}

}  // namespace dozewell
