#ifndef DOZEWELL_REPLAY_FILE_CONFIGURATIONS_H_
#define DOZEWELL_REPLAY_FILE_CONFIGURATIONS_H_

#include <cstdint>
#include <string>
#include <utility>

#include "prediction/configurations.h"
#include "replay/settings_file.h"

namespace dozewell::replay {

// The engine's configuration as a settings file gives it.
class FileConfigurations : public IConfigurations {
 public:
  explicit FileConfigurations(SettingsFile settings) : settings_(std::move(settings)) {}

  std::string GetValue(std::string section, std::string key) override;
  uint32_t GetTimeResolution() override;
  bool IsDynamicHAEnabled() override;
  // The current folder. No file is looked for there: the user names them all.
  std::wstring GetDataFolder() override { return L"."; }
  // The settings never change, so listeners would have nothing to hear.
  void RegisterListener(IConfigurationsListener*) override {}
  void UnregisterListener() override {}
  virtual ~FileConfigurations() = default;

 private:
  SettingsFile settings_;
};

}  // namespace dozewell::replay

#endif  // DOZEWELL_REPLAY_FILE_CONFIGURATIONS_H_
