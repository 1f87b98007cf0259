#include "replay/file_configurations.h"

#include <algorithm>
#include <optional>

#include "base/numbers.h"
#include "base/utf8.h"
#include "settings/setting_names.h"

namespace dozewell::replay {
namespace {

constexpr const char* kSettingsSection = "Settings";
constexpr const char* kMachineSection = "Machine";

// Sets are what a search stores, so a file may well be without.
bool HasDefault(const std::string& section, const std::string& key) {
  if (key.starts_with(kBestSetPrefix)) return false;
  static const SettingsFile kDefaults = LoadSettings(std::nullopt);
  return kDefaults.Has(section, key);
}

std::optional<std::string> IfAny(std::string text) {
  return text.empty() ? std::nullopt : std::optional(std::move(text));
}

}  // namespace

MachineIdentity FileConfigurations::Identity() const {
  // Keys that only the mark asks for are not missed.
  std::vector<std::string> ignored;
  FileConfigurations copy(settings_, ignored);
  MachineIdentity identity;
  identity.name = IfAny(settings_.Value(kMachineSection, "Name"));
  identity.settings = SettingsMark(copy, copy.IsPredictionDisabled());
  identity.zone = IfAny(settings_.Value(kMachineSection, "Zone"));
  return identity;
}

std::string FileConfigurations::Value(const std::string& section, const std::string& key) {
  const bool isKnownMissing = std::ranges::find(missing_, key) != missing_.end();
  if (!isKnownMissing && !settings_.Has(section, key) && HasDefault(section, key)) {
    missing_.push_back(key);
  }
  return settings_.Value(section, key);
}

std::string FileConfigurations::GetValue(std::string section, std::string key) {
  return Value(section, key);
}

uint32_t FileConfigurations::GetTimeResolution() {
  const std::string minutes = Value(kSettingsSection, NarrowToUtf8(kTimeResolutionName));
  return minutes.empty() ? kNoTimeResolution : static_cast<uint32_t>(Atoi(minutes));
}

bool FileConfigurations::IsDynamicHAEnabled() {
  return Atoi(Value(kSettingsSection, NarrowToUtf8(kEnableDynamicHAName))) == 1;
}

uint32_t FileConfigurations::ServiceNumber(const wchar_t* name, uint32_t valueIfAbsent) const {
  const std::string text = settings_.Value(kSettingsSection, NarrowToUtf8(name));
  return text.empty() ? valueIfAbsent : static_cast<uint32_t>(Atoi(text));
}

bool FileConfigurations::IsPredictionDisabled() {
  return Atoi(Value(kSettingsSection, NarrowToUtf8(kDisablePredictionName))) == 1;
}

}  // namespace dozewell::replay
