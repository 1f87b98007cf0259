#ifndef DOZEWELL_CTL_SETTINGS_TEXT_H_
#define DOZEWELL_CTL_SETTINGS_TEXT_H_

#include <span>
#include <string>

#include "common/json.h"
#include "common/machine_identity.h"
#include "ctl/settings_in_force.h"

namespace dozewell::ctl {

// A settings file for dozewell-replay, with the key that each value comes from as a comment. The
// machine's name and zone are in it if they are in the identity.
std::string SettingsFileText(std::span<const SettingRead> settings,
                             const MachineIdentity& identity);

// A table for people.
std::string SettingsTable(std::span<const SettingRead> settings);
Json SettingsJson(std::span<const SettingRead> settings);

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_SETTINGS_TEXT_H_
