#ifndef DOZEWELL_TESTS_FAKES_CONFIGURATIONS_FAKE_H_
#define DOZEWELL_TESTS_FAKES_CONFIGURATIONS_FAKE_H_

#include <cstdint>
#include <map>
#include <string>

#include "prediction/configurations.h"

namespace dozewell::fakes {

// A configuration in memory: a week of 15-minute slots without day grouping, until a test changes
// it.
struct Configurations : IConfigurations {
  std::map<std::string, std::string> values = {
      {"DaysInCycle", "7"},      {"MinutesInDay", "1440"},  {"FirstLastWeight", "2"},
      {"SecondLastWeight", "1"}, {"AgregationWeight", "1"}, {"StrengthHigh", "70"},
      {"StrengthLow", "30"},
  };
  uint32_t timeResolution = 15;
  std::wstring dataFolder = L"data";
  IConfigurationsListener* listener = nullptr;

  std::string GetValue(std::string section, std::string key) override {
    const auto found = values.find(key);
    return section == kPredictorSection && found != values.end() ? found->second : "";
  }
  uint32_t GetTimeResolution() override { return timeResolution; }
  bool IsDynamicHAEnabled() override { return false; }
  std::wstring GetDataFolder() override { return dataFolder; }
  void RegisterListener(IConfigurationsListener* newListener) override { listener = newListener; }
  void UnregisterListener() override { listener = nullptr; }
};

}  // namespace dozewell::fakes

#endif  // DOZEWELL_TESTS_FAKES_CONFIGURATIONS_FAKE_H_
