#include "optimizer/parameter_grid.h"

#include <string>

#include "base/numbers.h"
#include "optimizer/stop_request.h"

namespace dozewell {
namespace {

constexpr const char* kDaysInCycle = "7";
constexpr int32_t kWholeWeight = 100;

}  // namespace

NativeSimulatorConfigurations ConfigurationsOf(const ParameterSet& set) {
  return {kSimulatedDataPath,
          kDaysInCycle,
          std::to_string(set.weights.firstLast),
          std::to_string(set.weights.secondLast),
          std::to_string(set.weights.agregation),
          std::to_string(set.strengths.high),
          std::to_string(set.strengths.low),
          std::to_string(set.dayGrouping)};
}

uint64_t ParameterGrid::Size() const {
  return uint64_t{strengths.size()} * weights.size() * dayGroupings.size();
}

uint64_t ParameterGrid::PositionOf(size_t strengthPair, size_t weightTriple,
                                   size_t dayGrouping) const {
  return (uint64_t{strengthPair} * weights.size() + weightTriple) * dayGroupings.size() +
         dayGrouping;
}

ParameterSet ParameterGrid::SetAt(uint64_t position) const {
  const uint64_t rest = position / dayGroupings.size();
  return {strengths[rest / weights.size()], weights[rest % weights.size()],
          dayGroupings[position % dayGroupings.size()]};
}

ParameterGrid BuildParameterGrid(const ParameterRanges& ranges) {
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
      const int32_t rest = Wrap32(int64_t{kWholeWeight} - second - first);
      if (rest > 0) grid.weights.push_back({first, second, rest});
    }
  }
  grid.dayGroupings = ranges.dayGrouping;
  return grid;
}

}  // namespace dozewell
