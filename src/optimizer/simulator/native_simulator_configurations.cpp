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
  if (key == "DaysInCycle") return daysInCycle_;
  if (key == "MinutesInDay") return "1440";
  if (key == "FirstLastWeight") return firstLastWeight_;
  if (key == "SecondLastWeight") return secondLastWeight_;
  if (key == "AgregationWeight") return agregationWeight_;
  if (key == "Strength") return "90";
  if (key == "StrengthHigh") return strengthHigh_;
  if (key == "StrengthLow") return strengthLow_;
  if (key == "UseDualStrength") return "True";
  if (key == "DayGrouping") return dayGrouping_;
  return {};
}

}  // namespace dozewell
