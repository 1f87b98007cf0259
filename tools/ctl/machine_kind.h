#ifndef DOZEWELL_CTL_MACHINE_KIND_H_
#define DOZEWELL_CTL_MACHINE_KIND_H_

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "common/json.h"
#include "ctl/windows_timer.h"
#include "power/power_capabilities.h"
#include "power/scheme_settings.h"

namespace dozewell::ctl {

// A setting as it holds for one power source.
struct SettingInForce {
  std::optional<uint32_t> value;    // the system's own number
  std::optional<bool> underPolicy;  // a policy decides on it, and no scheme
};

// What the service finds on a machine: its ways to sleep, and who decides on them. What the system
// does not tell is empty.
struct MachineKind {
  std::optional<PowerCapabilities> capabilities;
  std::optional<uint32_t> fastStartupSetting;        // 1 is on
  std::array<SettingInForce, 2> hibernateAfter;      // in seconds, by kPowerSourceAC and its like
  std::array<SettingInForce, 2> wakeTimers;          // 0 is never
  std::optional<bool> hasDriver;                     // one that answers the service
  WindowsTimer windowsTimer = WindowsTimer::Unused;  // in the driver's place
};

// Reads all but what wakes the machine, which the service knows. It changes nothing.
MachineKind ReadMachineKind();

// Adds what wakes the machine. The service's answer on its wake timer says whether anything does.
void NoteWakeTimer(MachineKind& kind, bool answers);

// The value of the active scheme, or of the policy that overrules it.
SettingInForce ReadSettingInForce(uint32_t source, const SchemeSetting& setting);

// A shut-down hibernates the system's own session. Nothing when the system does not tell.
std::optional<bool> StartsFast(const MachineKind& kind);

bool IsUnderPolicy(const std::array<SettingInForce, 2>& setting);

// A policy allows no wake timer on mains, on battery or both.
bool AreWakeTimersForbidden(const MachineKind& kind);

// Why Windows' timer, in the driver's place, does not wake this machine, or not always; empty when
// nothing is known against it or another one is in use.
std::vector<std::string> WindowsTimerLimits(const MachineKind& kind);

// What a user should know of the machine in a few words: "Modern Standby, no driver".
std::string KindText(const MachineKind& kind);
Json KindJson(const MachineKind& kind);

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_MACHINE_KIND_H_
