#include "power/wake_possible.h"

#include <cstdint>

#include "power/driver_device.h"
#include "power/power_capabilities.h"
#include "power/power_scheme.h"
#include "power/power_source.h"
#include "power/scheme_settings.h"
#include "power/wake_timer_policy.h"

namespace dozewell {
namespace {

bool WakesFromHibernation() {
  PowerCapabilities capabilities;
  return ReadPowerCapabilities(capabilities) && capabilities.HasTimerWakeFromS4();
}

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

}  // namespace

bool WakePossible() {
  IDeviceStandIn* const standIn = DeviceStandIn;
  if (standIn == nullptr) return HasDriverDevice();
  return standIn->CanWake() && WakesFromHibernation() && AreWakeTimersAllowed();
}

}  // namespace dozewell
