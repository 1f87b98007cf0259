#include "optimizer/simulator/native_simulator_configurations.h"

#include <utility>

namespace dozewell {

NativeSimulatorConfigurations::NativeSimulatorConfigurations(
    std::wstring dataPath, std::string daysInCycle, std::string firstLastWeight,
    std::string secondLastWeight, std::string agregationWeight, std::string strengthHigh,
    std::string strengthLow, std::string dayGrouping)
    : dataPath_(std::move(dataPath)),
      daysInCycle_(std::move(daysInCycle)),
      firstLastWeight_(std::move(firstLastWeight)),
      secondLastWeight_(std::move(secondLastWeight)),
      agregationWeight_(std::move(agregationWeight)),
      strengthHigh_(std::move(strengthHigh)),
      strengthLow_(std::move(strengthLow)),
      dayGrouping_(std::move(dayGrouping)) {}

std::string NativeSimulatorConfigurations::GetValue(std::string, std::string key) {
  if (key == kDaysInCycleName) return daysInCycle_;
  if (key == kMinutesInDayName) return "1440";
  if (key == kFirstLastWeightName) return firstLastWeight_;
  if (key == kSecondLastWeightName) return secondLastWeight_;
  if (key == kAgregationWeightName) return agregationWeight_;
  if (key == kStrengthName) return "90";
  if (key == kStrengthHighName) return strengthHigh_;
  if (key == kStrengthLowName) return strengthLow_;
  if (key == kUseDualStrengthName) return "True";
  if (key == kDayGroupingName) return dayGrouping_;
  return {};
}

}  // namespace dozewell
