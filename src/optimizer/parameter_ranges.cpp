#include "optimizer/parameter_ranges.h"

#include "base/numbers.h"
#include "optimizer/simulator/stop_request.h"

namespace dozewell {

ParameterRanges ReadParameterRanges(IConfigurations& configuration) {
  ParameterRanges ranges;
  ranges.strengthHigh = ReadPredictorNumbers(configuration, kStrengthHighRangeName);
  ranges.strengthLow = ReadPredictorNumbers(configuration, kStrengthLowRangeName);
  ranges.firstLastWeight = ReadPredictorNumbers(configuration, kFirstLastWeightRangeName);
  ranges.secondLastWeight = ReadPredictorNumbers(configuration, kSecondLastWeightRangeName);
  ranges.dayGrouping = ReadPredictorNumbers(configuration, kDayGroupingRangeName);
  return ranges;
}

ParameterGrid BuildParameterGrid(const ParameterRanges& ranges) {
  constexpr int64_t kWholeWeight = 100;
  ParameterGrid grid;
  for (const int32_t high : ranges.strengthHigh) {
    for (const int32_t low : ranges.strengthLow) {
      if (OptimizerStopRequested) return grid;
      if (low <= high) grid.strengths.push_back({high, low});
    }
  }
  for (const int32_t first : ranges.firstLastWeight) {
    for (const int32_t second : ranges.secondLastWeight) {
      if (OptimizerStopRequested) return grid;
      const int32_t rest = Wrap32(kWholeWeight - second - first);
      if (rest > 0) grid.weights.push_back({first, second, rest});
    }
  }
  grid.dayGroupings = ranges.dayGrouping;
  return grid;
}

}  // namespace dozewell
