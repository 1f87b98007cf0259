#include "optimizer/parameter_ranges.h"

namespace dozewell {

ParameterRanges ReadParameterRanges(IConfigurations& configuration) {
  ParameterRanges ranges;
  ranges.strengthHigh = ReadPredictorNumbers(configuration, "StrengthHighRange");
  ranges.strengthLow = ReadPredictorNumbers(configuration, "StrengthLowRange");
  ranges.firstLastWeight = ReadPredictorNumbers(configuration, "FirstLastWeightRange");
  ranges.secondLastWeight = ReadPredictorNumbers(configuration, "SecondLastWeightRange");
  ranges.dayGrouping = ReadPredictorNumbers(configuration, "DayGroupingRange");
  return ranges;
}

}  // namespace dozewell
