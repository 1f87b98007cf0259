#include <windows.h>

#include "power/power_scheme.h"
#include "power/wake_timer_policy.h"

namespace dozewell {

std::optional<uint32_t> ReadWakeTimerPolicy(uint32_t source) {
  DWORD value = 0;
  DWORD size = sizeof(value);
  const LSTATUS status =
      RegGetValueW(HKEY_LOCAL_MACHINE,
                   L"SOFTWARE\\Policies\\Microsoft\\Power\\PowerSettings\\"
                   L"BD3B718A-0680-4D9D-8AB2-E1D2B4AC806D",
                   source == kPowerSourceAC ? L"ACSettingIndex" : L"DCSettingIndex",
                   RRF_RT_REG_DWORD, nullptr, &value, &size);
  return status == ERROR_SUCCESS ? std::optional<uint32_t>(value) : std::nullopt;
}

}  // namespace dozewell
