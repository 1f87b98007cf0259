#include "ctl/machine_kind.h"

#include <algorithm>

#include "base/utf8.h"
#include "ctl/guid_text.h"
#include "ctl/power_policy.h"
#include "ctl/registry_value.h"

namespace dozewell::ctl {
namespace {

constexpr wchar_t kSessionManagerKey[] =
    L"SYSTEM\\CurrentControlSet\\Control\\Session Manager\\Power";
constexpr char kPolicyKey[] = "SOFTWARE\\Policies\\Microsoft\\Power\\PowerSettings\\";

std::wstring PolicyKeyOf(const Guid& setting) { return WidenUtf8(kPolicyKey + GuidText(setting)); }

std::optional<bool> Capability(const MachineKind& kind, bool (PowerCapabilities::*has)() const) {
  if (!kind.capabilities) return std::nullopt;
  return (*kind.capabilities.*has)();
}

Json WakeTimerJson(const MachineKind& kind) {
  if (!kind.hasDriver) return nullptr;
  if (*kind.hasDriver) return "driver";
  return kind.windowsTimer == WindowsTimer::Unused ? "none" : "windows";
}

}  // namespace

SettingInForce ReadSettingInForce(uint32_t source, const SchemeSetting& setting) {
  SettingInForce inForce = {std::nullopt, IsSettingUnderPolicy(source, setting.setting)};
  if (inForce.underPolicy == true) {
    inForce.value =
        ReadMachineNumber(PolicyKeyOf(setting.setting).c_str(),
                          source == kPowerSourceAC ? L"ACSettingIndex" : L"DCSettingIndex");
    return inForce;
  }
  Guid scheme = {};
  uint32_t value = 0;
  if (GetActivePowerScheme(scheme) &&
      ReadSchemeValue(source, scheme, setting.subgroup, setting.setting, value)) {
    inForce.value = value;
  }
  return inForce;
}

MachineKind ReadMachineKind() {
  MachineKind kind;
  PowerCapabilities capabilities;
  if (ReadPowerCapabilities(capabilities)) kind.capabilities = capabilities;
  kind.fastStartupSetting = ReadMachineNumber(kSessionManagerKey, L"HiberbootEnabled");
  for (const uint32_t source : {kPowerSourceAC, kPowerSourceDC}) {
    kind.hibernateAfter[source] = ReadSettingInForce(source, kHibernateAfterSetting);
    kind.wakeTimers[source] = ReadSettingInForce(source, kAllowWakeTimersSetting);
  }
  return kind;
}

std::optional<bool> StartsFast(const MachineKind& kind) {
  if (!kind.capabilities) return std::nullopt;
  if (!kind.capabilities->CanStartFast()) return false;
  if (!kind.fastStartupSetting) return std::nullopt;
  return *kind.fastStartupSetting == 1;
}

void NoteWakeTimer(MachineKind& kind, bool answers) {
  kind.windowsTimer = answers ? ReadWindowsTimer() : WindowsTimer::Unused;
  kind.hasDriver = answers && kind.windowsTimer == WindowsTimer::Unused;
}

bool IsUnderPolicy(const std::array<SettingInForce, 2>& setting) {
  return std::ranges::any_of(
      setting, [](const SettingInForce& inForce) { return inForce.underPolicy == true; });
}

bool AreWakeTimersForbidden(const MachineKind& kind) {
  return std::ranges::any_of(kind.wakeTimers, [](const SettingInForce& inForce) {
    return inForce.underPolicy == true && inForce.value == 0U;
  });
}

std::vector<std::string> WindowsTimerLimits(const MachineKind& kind) {
  constexpr const char* kForbidden[] = {"Windows does not allow it on mains",
                                        "Windows does not allow it on battery"};
  if (kind.windowsTimer == WindowsTimer::Unused) return {};
  std::vector<std::string> limits;
  if (kind.windowsTimer == WindowsTimer::CannotWake) {
    limits.emplace_back("Windows says that it cannot wake this machine");
  }
  if (Capability(kind, &PowerCapabilities::HasTimerWakeFromS4) == false) {
    limits.emplace_back("the machine's clock does not wake it from hibernation");
  }
  for (size_t source = 0; source < kind.wakeTimers.size(); ++source) {
    const auto& value = kind.wakeTimers[source].value;
    if (value && *value != kWakeTimersAllowed) limits.emplace_back(kForbidden[source]);
  }
  return limits;
}

std::string KindText(const MachineKind& kind) {
  std::string text;
  const auto add = [&text](bool holds, const char* words) {
    if (holds) text += (text.empty() ? "" : ", ") + std::string(words);
  };
  add(!kind.capabilities, "what it can do is not known");
  add(Capability(kind, &PowerCapabilities::HasModernStandby) == true, "Modern Standby");
  add(Capability(kind, &PowerCapabilities::HasS3) == false, "no sleep (S3)");
  add(Capability(kind, &PowerCapabilities::HasS4) == false, "no hibernation (S4)");
  add(Capability(kind, &PowerCapabilities::HasHibernationFile) == false, "no hibernation file");
  add(StartsFast(kind) == true, "Fast Startup");
  add(AreWakeTimersForbidden(kind), "wake timers forbidden");
  add(IsUnderPolicy(kind.hibernateAfter), "hibernate-after under policy");
  const bool hasWindowsTimer = kind.windowsTimer != WindowsTimer::Unused;
  add(hasWindowsTimer, "no driver but Windows' timer");
  add(kind.hasDriver == false && !hasWindowsTimer, "no driver");
  return text.empty() ? "sleeps and hibernates" : text;
}

Json KindJson(const MachineKind& kind) {
  return {
      {"sleeps", OptionalJson(Capability(kind, &PowerCapabilities::HasS3))},
      {"hibernates", OptionalJson(Capability(kind, &PowerCapabilities::HasS4))},
      {"hibernationFile", OptionalJson(Capability(kind, &PowerCapabilities::HasHibernationFile))},
      {"modernStandby", OptionalJson(Capability(kind, &PowerCapabilities::HasModernStandby))},
      {"fastStartup", OptionalJson(StartsFast(kind))},
      {"wakeTimersForbidden", AreWakeTimersForbidden(kind)},
      {"hibernateAfterUnderPolicy", IsUnderPolicy(kind.hibernateAfter)},
      {"driver", OptionalJson(kind.hasDriver)},
      {"wakeTimer", WakeTimerJson(kind)},
      {"wakeTimerLimits", WindowsTimerLimits(kind)},
  };
}

}  // namespace dozewell::ctl
