#include "power/wake_timers_allowed.h"

#include <cstdint>

#include "power/power_scheme.h"
#include "power/power_source.h"
#include "power/scheme_settings.h"
#include "power/wake_timer_policy.h"

namespace dozewell {

// Where only the important ones are allowed, the service's is not among them.
bool AreWakeTimersAllowed() {
  uint8_t lineStatus = kLineUnknown;
  if (!ReadAcLineStatus(lineStatus)) return false;
  const uint32_t source = lineStatus == kLineOffline ? kPowerSourceDC : kPowerSourceAC;
  if (const auto policy = ReadWakeTimerPolicy(source)) return *policy == kWakeTimersAllowed;
  Guid scheme = {};
  uint32_t value = 0;
  return GetActivePowerScheme(scheme) &&
         ReadSchemeValue(source, scheme, kAllowWakeTimersSetting.subgroup,
                         kAllowWakeTimersSetting.setting, value) &&
         value == kWakeTimersAllowed;
}

}  // namespace dozewell
