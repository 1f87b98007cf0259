#include "prediction/configurations_impl.h"

#include <utility>

#include "settings/data_folder.h"
#include "settings/predictor_values.h"
#include "settings/setting_names.h"
#include "settings/settings_store.h"

namespace dozewell {

std::string ConfigurationsImpl::GetValue(std::string section, std::string key) {
  return ReadPredictorValue(section, key);
}

uint32_t ConfigurationsImpl::GetTimeResolution() {
  return SettingOr(kTimeResolutionName, kNoTimeResolution);
}

bool ConfigurationsImpl::IsDynamicHAEnabled() {
  return SettingOr(kEnableDynamicHAName, kDefaultEnableDynamicHA) == 1;
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
