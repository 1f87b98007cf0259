#include "prediction/configurations_impl.h"

#include <utility>

#include "settings/data_folder.h"
#include "settings/predictor_values.h"
#include "settings/settings_store.h"

namespace dozewell {

std::string ConfigurationsImpl::GetValue(std::string section, std::string key) {
  return ReadPredictorValue(section, key);
}

uint32_t ConfigurationsImpl::GetTimeResolution() {
  uint32_t minutes = kNoTimeResolution;
  ReadSetting(L"TimeResolution", minutes, /*deleteAfterRead=*/false);
  return minutes;
}

bool ConfigurationsImpl::IsDynamicHAEnabled() {
  uint32_t enabled = 0;
  ReadSetting(L"EnableDynamicHA", enabled, /*deleteAfterRead=*/false);
  return enabled == 1;
}

std::wstring ConfigurationsImpl::GetDataFolder() { return dozewell::GetDataFolder(); }

void ConfigurationsImpl::RegisterListener(IConfigurationsListener* listener) {
  listener_ = listener;
}

void ConfigurationsImpl::UnregisterListener() { listener_ = nullptr; }

void ConfigurationsImpl::NotifyListener(std::string section) {
  if (listener_ != nullptr) listener_->OnConfigurationChanged(std::move(section));
}

std::vector<int32_t> ParseIntList(const char* key) {
  ConfigurationsImpl configuration;
  return ReadPredictorNumbers(configuration, key);
}

}  // namespace dozewell
