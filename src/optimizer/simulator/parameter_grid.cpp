#include "optimizer/simulator/parameter_grid.h"

#include <string>

namespace dozewell {
namespace {

constexpr const char* kDaysInCycle = "7";

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

}  // namespace dozewell
