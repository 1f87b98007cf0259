#include "report/set_text.h"

#include <cstdint>

#include "prediction/arbitrary_cycle_probability_tracker.h"
#include "report/day_groups_text.h"

namespace dozewell::report {
namespace {

// With a no-break space.
constexpr const char* kPercent = "\u00A0%";

}  // namespace

std::string SetText(const ParameterSet& set) {
  const auto percent = [](int32_t number) { return std::to_string(number) + kPercent; };
  NativeSimulatorConfigurations configuration = ConfigurationsOf(set);
  const ArbitraryCycleProbabilityTracker tracker(&configuration);
  return "What was last seen of a time of day counts " + percent(set.weights.firstLast) +
         ", what was seen before that " + percent(set.weights.secondLast) +
         " and all that is older " + percent(set.weights.agregation) + ". Below " +
         percent(set.strengths.low) + " the machine is expected to be idle, from " +
         percent(set.strengths.high) + " on in use. " + DayGroupsText(tracker.PooledDays());
}

}  // namespace dozewell::report
