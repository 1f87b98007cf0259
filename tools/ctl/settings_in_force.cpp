#include "ctl/settings_in_force.h"

#include <algorithm>
#include <cstdint>

#include "base/numbers.h"
#include "base/utf8.h"
#include "common/predictor_keys.h"
#include "common/text.h"
#include "ctl/registry_value.h"
#include "prediction/configurations_impl.h"
#include "settings/predictor_values.h"
#include "settings/setting_names.h"
#include "settings/settings_store.h"

namespace dozewell::ctl {
namespace {

constexpr const char* kSettings = "Settings";
constexpr const char* kStart = "Start";

struct NumberSetting {
  const char* section;
  const wchar_t* name;
  std::optional<uint32_t> valueIfAbsent;
};

constexpr NumberSetting kNumbers[] = {
    {kSettings, kTimeResolutionName, std::nullopt},
    {kSettings, kHistoryLimitName, kDefaultHistoryLimitDays},
    {kSettings, kEnableDynamicHAName, kDefaultEnableDynamicHA},
    {kSettings, kDisablePredictionName, kDefaultDisablePrediction},
    {kSettings, kOptimizerIntervalName, kDefaultOptimizerIntervalDays},
    {kSettings, kOptimizerDelayName, kDefaultOptimizerDelayMinutes},
    {kStart, kEnableZ7FeatureName, kDefaultEnableZ7Feature},
    {kStart, kTotalAttemptsName, std::nullopt},
    {kStart, kCurrentAttemptName, std::nullopt},
    {kStart, kTotalBatteryAttemptsName, std::nullopt},
    {kStart, kCurrentBatteryAttemptsName, std::nullopt},
    {kStart, kDebugLoggingName, kDefaultDebugLogging},
};

struct Key {
  const char* name;
  const wchar_t* path;
};

// In the service's order of looking them up.
constexpr Key kKeys[] = {
    {"Current", kCurrentKey}, {"Branding", kBrandingKey}, {"Default", kDefaultKey}};

// The first key in which a value counts as found.
template <typename IsFound>
std::optional<std::string> KeyOf(IsFound isFound) {
  const auto* const key = std::ranges::find_if(kKeys, isFound);
  return key == std::end(kKeys) ? std::nullopt : std::optional<std::string>(key->name);
}

// A settings file's reader takes numbers as signed.
std::string NumberText(uint32_t number) { return std::to_string(static_cast<int32_t>(number)); }

SettingRead Read(const NumberSetting& setting) {
  // A number that is longer counts as absent.
  constexpr uint32_t kMostBytes = 4;
  SettingRead read = {setting.section, NarrowToUtf8(setting.name), std::nullopt, std::nullopt};
  uint32_t number = 0;
  if (ReadSetting(setting.name, number, /*deleteAfterRead=*/false)) {
    read.value = NumberText(number);
    read.key = KeyOf([&setting](const Key& key) {
      return ReadMachineValueSize(key.path, setting.name).value_or(kMostBytes + 1) <= kMostBytes;
    });
  } else if (setting.valueIfAbsent) {
    read.value = NumberText(*setting.valueIfAbsent);
  }
  return read;
}

SettingRead ReadPredictorSetting(const std::string& name) {
  SettingRead read = {kPredictorSection, name, std::nullopt, std::nullopt};
  // A value of any type ends the search.
  read.key = KeyOf([&name](const Key& key) {
    const std::wstring path = std::wstring(key.path) + L"\\" + WidenUtf8(kPredictorsSubkey) +
                              L"\\" + WidenUtf8(kPredictorSection);
    return ReadMachineValueSize(path.c_str(), WidenUtf8(name).c_str()).has_value();
  });
  if (read.key) read.value = InOneLine(ReadPredictorValue(kPredictorSection, name));
  return read;
}

// The results of searches are stored under Best and a number: one for each scoring weight, and the
// one that the strength chooses.
std::vector<std::string> NamesOfResults() {
  const size_t weights = ParseIntList(kScoringWeightsName).size();
  std::vector<std::string> names;
  for (size_t i = 0; i < weights; ++i) names.push_back(kBestSetPrefix + std::to_string(i));
  const std::string chosen =
      kBestSetPrefix + std::to_string(Atoi(ReadPredictorValue(kPredictorSection, kStrengthName)));
  if (std::ranges::find(names, chosen) == names.end()) names.push_back(chosen);
  return names;
}

}  // namespace

std::vector<SettingRead> ReadSettingsInForce() {
  std::vector<SettingRead> settings;
  for (const NumberSetting& setting : kNumbers) settings.push_back(Read(setting));
  for (const char* const name : kPredictorKeys) settings.push_back(ReadPredictorSetting(name));
  for (const std::string& name : NamesOfResults()) {
    SettingRead result = ReadPredictorSetting(name);
    if (result.key) settings.push_back(std::move(result));
  }
  return settings;
}

}  // namespace dozewell::ctl
