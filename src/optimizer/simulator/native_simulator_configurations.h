#ifndef DOZEWELL_OPTIMIZER_SIMULATOR_NATIVE_SIMULATOR_CONFIGURATIONS_H_
#define DOZEWELL_OPTIMIZER_SIMULATOR_NATIVE_SIMULATOR_CONFIGURATIONS_H_

#include <cstdint>
#include <string>

#include "prediction/configurations.h"

namespace dozewell {

// The length of a slot in every simulation, in minutes. kTimeResolutionName is not read.
constexpr uint32_t kSimulatedTimeResolution = 10;

// A data folder that can never be opened, so that a simulation always starts from a blank tracker
// and never reads or writes the service's data.
constexpr const wchar_t* kSimulatedDataPath = L"c:\\invalidpath:";

// The parameters of a candidate, which stand in for the settings. They never change, so listeners
// are ignored. A default-constructed object has empty texts.
class NativeSimulatorConfigurations : public IConfigurations {
 public:
  NativeSimulatorConfigurations() = default;
  NativeSimulatorConfigurations(std::wstring dataPath, std::string daysInCycle,
                                std::string firstLastWeight, std::string secondLastWeight,
                                std::string agregationWeight, std::string strengthHigh,
                                std::string strengthLow, std::string dayGrouping);

  // The section is ignored; an unknown key gives the empty text.
  std::string GetValue(std::string section, std::string key) override;
  uint32_t GetTimeResolution() override { return timeResolution_; }
  bool IsDynamicHAEnabled() override { return true; }
  std::wstring GetDataFolder() override { return dataPath_; }
  void RegisterListener(IConfigurationsListener*) override {}
  void UnregisterListener() override {}
  virtual ~NativeSimulatorConfigurations() = default;

 private:
  std::wstring dataPath_;
  uint32_t timeResolution_ = kSimulatedTimeResolution;
  std::string daysInCycle_;
  std::string firstLastWeight_;
  std::string secondLastWeight_;
  std::string agregationWeight_;
  std::string strengthHigh_;
  std::string strengthLow_;
  std::string dayGrouping_;
};

}  // namespace dozewell

#endif  // DOZEWELL_OPTIMIZER_SIMULATOR_NATIVE_SIMULATOR_CONFIGURATIONS_H_
