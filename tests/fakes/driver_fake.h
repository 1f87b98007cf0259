#ifndef DOZEWELL_TESTS_FAKES_DRIVER_FAKE_H_
#define DOZEWELL_TESTS_FAKES_DRIVER_FAKE_H_

#include <cstdint>
#include <string>
#include <vector>

#include "fakes/call_failer.h"
#include "power/driver_timer.h"
#include "support/calls.h"

namespace dozewell::fakes {

// The driver with its device. FindDriverDevice opens it; before that every control fails, as it
// does without a device.
struct Driver {
  bool present = true;  // whether the device is there to be opened
  TimerRecord timer;
  uint32_t previousSleepStatus = 0;
  CallFailer failer;  // counts the controls, including those on a device that is not open
  // In order: "open", "close", "read timer", "write timer 80000001 00000002" and "read previous
  // sleep status", each with " on no device" when the handle is not the device's. A control that
  // the driver does not know, or of other sizes, fails and is noted as "control <code> <sizes>".
  Calls calls;
};
extern Driver driver;

// A driver whose device has not been opened, as in a fresh process.
void ResetDriver();

}  // namespace dozewell::fakes

#endif  // DOZEWELL_TESTS_FAKES_DRIVER_FAKE_H_
