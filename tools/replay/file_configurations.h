#ifndef DOZEWELL_REPLAY_FILE_CONFIGURATIONS_H_
#define DOZEWELL_REPLAY_FILE_CONFIGURATIONS_H_

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "common/machine_identity.h"
#include "prediction/configurations.h"
#include "replay/settings_file.h"

namespace dozewell::replay {

// The engine's configuration as a settings file gives it.
class FileConfigurations : public IConfigurations {
 public:
  // Keys that are asked for, have a default and are not in the file are added to `missing`, which
  // must outlive this object.
  FileConfigurations(SettingsFile settings, std::vector<std::string>& missing)
      : settings_(std::move(settings)), missing_(missing) {}

  // What the user knows the settings as.
  const std::string& Name() const { return settings_.Name(); }
  // Whose settings they are, by name and time zone, as far as the file says so, and their mark.
  MachineIdentity Identity() const;
  // The setting DisablePrediction, which the service looks at before it asks for predictions.
  bool IsPredictionDisabled();

  // A number of the service, which has its default where the file lacks it.
  uint32_t ServiceNumber(const wchar_t* name, uint32_t valueIfAbsent) const;

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
  std::string Value(const std::string& section, const std::string& key);

  SettingsFile settings_;
  std::vector<std::string>& missing_;
};

}  // namespace dozewell::replay

#endif  // DOZEWELL_REPLAY_FILE_CONFIGURATIONS_H_
