#include "ctl/live_settings.h"

#include <string>

#include "settings/predictor_values.h"
#include "settings/setting_names.h"
#include "settings/settings_store.h"

namespace dozewell::ctl {

bool ReadFeatureEnabled() { return SettingOr(kEnableZ7FeatureName, kDefaultEnableZ7Feature) == 1; }

bool ReadPredictionsEnabled() {
  return SettingOr(kDisablePredictionName, kDefaultDisablePrediction) != 1;
}

bool StrengthHasResult(int32_t strength) {
  return !ReadPredictorValue(kPredictorSection, kBestSetPrefix + std::to_string(strength)).empty();
}

std::optional<uint32_t> ReadAttempts(const wchar_t* name) {
  uint32_t value = 0;
  const bool found = ReadSetting(name, value, /*deleteAfterRead=*/false);
  return found ? std::optional(value) : std::nullopt;
}

SearchHabits ReadSearchHabits() {
  return {SettingOr(kOptimizerIntervalName, kDefaultOptimizerIntervalDays),
          SettingOr(kOptimizerDelayName, kDefaultOptimizerDelayMinutes),
          SettingOr(kHistoryLimitName, kDefaultHistoryLimitDays)};
}

}  // namespace dozewell::ctl
