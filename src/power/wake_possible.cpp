#include "power/wake_possible.h"

#include "power/driver_device.h"
#include "power/power_capabilities.h"
#include "power/wake_timers_allowed.h"

namespace dozewell {
namespace {

bool WakesFromHibernation() {
  PowerCapabilities capabilities;
  return ReadPowerCapabilities(capabilities) && capabilities.HasTimerWakeFromS4();
}

}  // namespace

bool WakePossible() {
  IDeviceStandIn* const standIn = DeviceStandIn;
  if (standIn == nullptr) return HasDriverDevice();
  return standIn->CanWake() && WakesFromHibernation() && AreWakeTimersAllowed();
}

}  // namespace dozewell
