#include "prediction/configurations_impl.h"

#include <string_view>
#include <utility>

#include "base/numbers.h"
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
  constexpr std::string_view kDelimiters = " ,";
  const std::string value = ConfigurationsImpl().GetValue(kPredictorSection, key);
  std::vector<int32_t> numbers;
  std::string_view rest = value;
  for (;;) {
    const size_t start = rest.find_first_not_of(kDelimiters);
    if (start == std::string_view::npos) return numbers;
    rest.remove_prefix(start);
    const std::string_view token = rest.substr(0, rest.find_first_of(kDelimiters));
    numbers.push_back(Atoi(token));
    rest.remove_prefix(token.size());
  }
}

}  // namespace dozewell
