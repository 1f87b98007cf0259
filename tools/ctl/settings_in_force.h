#ifndef DOZEWELL_CTL_SETTINGS_IN_FORCE_H_
#define DOZEWELL_CTL_SETTINGS_IN_FORCE_H_

#include <optional>
#include <string>
#include <vector>

namespace dozewell::ctl {

// A setting as the service reads it.
struct SettingRead {
  const char* section;  // where it stands in a settings file
  std::string name;
  std::optional<std::string>
      value;                       // in one line; nothing when no key has it and it has no default
  std::optional<std::string> key;  // Current, Branding or Default; nothing when none has it
};

// All settings, in the order of a settings file: the numbers of the service, the values of the
// predictor's section, and the results of searches that there are.
std::vector<SettingRead> ReadSettingsInForce();

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_SETTINGS_IN_FORCE_H_
