#include "report/set_text.h"

#include <cstdint>

#include "common/day_names.h"
#include "prediction/arbitrary_cycle_probability_tracker.h"

namespace dozewell::report {
namespace {

// With a no-break space.
constexpr const char* kPercent = "\u00A0%";

// The days of a group from Monday on: "Sat, Sun".
std::string GroupText(const DayGroups& groups, int group) {
  std::string text;
  for (int i = 0; i < kDaysInWeek; ++i) {
    const int day = CycleDayFromMonday(i);
    if (groups.GroupOf(day) != group) continue;
    if (!text.empty()) text += ", ";
    text += CycleDayName(day);
  }
  return text;
}

std::string GroupsText(const DayGroups* groups) {
  if (groups == nullptr) return "Each day of the week counts alone.";
  const std::string first = GroupText(*groups, 0);
  const std::string second = GroupText(*groups, 1);
  if (first.empty() || second.empty()) return "All days count together.";
  return "Days that count together: " + first + "; and " + second + ".";
}

}  // namespace

std::string SetText(const ParameterSet& set) {
  const auto percent = [](int32_t number) { return std::to_string(number) + kPercent; };
  NativeSimulatorConfigurations configuration = ConfigurationsOf(set);
  const ArbitraryCycleProbabilityTracker tracker(&configuration);
  return "What was last seen of a time of day counts " + percent(set.weights.firstLast) +
         ", what was seen before that " + percent(set.weights.secondLast) +
         " and all that is older " + percent(set.weights.agregation) + ". Below " +
         percent(set.strengths.low) + " the machine is expected to be idle, from " +
         percent(set.strengths.high) + " on in use. " + GroupsText(tracker.PooledDays());
}

}  // namespace dozewell::report
