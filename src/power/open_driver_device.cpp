#include "power/open_driver_device.h"

#include "power/driver_device.h"
#include "power/timer_device.h"
#include "settings/predictor_values.h"
#include "settings/setting_names.h"

namespace dozewell {
namespace {

// Never destroyed, as a late caller may still use it.
TimerDevice& TheTimerDevice = *new TimerDevice;

}  // namespace

void OpenDriverDevice() {
  if (FindDriverDevice()) return;
  if (ReadPredictorValue(kPredictorSection, kWakeTimerName) != kWindowsWakeTimer) return;
  if (TheTimerDevice.Open()) DeviceStandIn = &TheTimerDevice;
}

}  // namespace dozewell
