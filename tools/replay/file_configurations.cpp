#include "replay/file_configurations.h"

#include "base/numbers.h"
#include "base/utf8.h"
#include "settings/setting_names.h"

namespace dozewell::replay {
namespace {

constexpr const char* kSettingsSection = "Settings";

}  // namespace

std::string FileConfigurations::GetValue(std::string section, std::string key) {
  return settings_.Value(section, key);
}

uint32_t FileConfigurations::GetTimeResolution() {
  const std::string minutes = settings_.Value(kSettingsSection, NarrowToUtf8(kTimeResolutionName));
  return minutes.empty() ? kNoTimeResolution : static_cast<uint32_t>(Atoi(minutes));
}

bool FileConfigurations::IsDynamicHAEnabled() {
  return Atoi(settings_.Value(kSettingsSection, NarrowToUtf8(kEnableDynamicHAName))) == 1;
}

}  // namespace dozewell::replay
