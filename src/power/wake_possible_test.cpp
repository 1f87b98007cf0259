#include "power/wake_possible.h"

#include <doctest/doctest.h>

#include <cstdint>
#include <utility>

#include "fakes/driver_fake.h"
#include "fakes/machine.h"
#include "fakes/power_fake.h"
#include "fakes/settings_fake.h"
#include "fakes/wake_timer_fake.h"
#include "power/driver_timer.h"
#include "power/open_driver_device.h"
#include "settings/setting_names.h"

namespace dozewell {
namespace {

using fakes::power;

// The system's timer is in the driver's place, and all is well on mains and on battery.
struct WakeableMachine {
  fakes::Machine machine;

  WakeableMachine() {
    fakes::driver.present = false;
    fakes::settings.current.predictorValues[{kPredictorSection, kWakeTimerName}] =
        fakes::Text("windows");
    power.values["balanced AC wake timers"] = 1;
    power.values["balanced DC wake timers"] = 1;
    OpenDriverDevice();
  }
};

}  // namespace

TEST_CASE("with the driver a wake is possible, whatever the system allows its own timers") {
  const fakes::Machine machine;
  CHECK_FALSE(WakePossible());
  OpenDriverDevice();
  CHECK(WakePossible());
  power.capabilities.reset();
  power.wakeTimerPolicy = 0;
  CHECK(WakePossible());
}

TEST_CASE("without the driver and the system's timer no wake is possible") {
  const fakes::Machine machine;
  fakes::driver.present = false;
  OpenDriverDevice();
  CHECK_FALSE(WakePossible());
}

TEST_CASE("the system's timer wakes only where the scheme allows it for the present source") {
  for (const auto& [value, possible] : {std::pair{0U, false}, {1U, true}, {2U, false}}) {
    for (const bool onMains : {true, false}) {
      const WakeableMachine machine;
      CHECK(WakePossible());
      power.acLineStatus = onMains ? kLineOnline : kLineOffline;
      power.values[onMains ? "balanced AC wake timers" : "balanced DC wake timers"] = value;
      CHECK(WakePossible() == possible);
      power.acLineStatus = onMains ? kLineOffline : kLineOnline;
      CHECK(WakePossible());
    }
  }
}

TEST_CASE("a policy overrules the scheme") {
  for (const auto& [policy, possible] : {std::pair{0U, false}, {1U, true}, {2U, false}}) {
    const WakeableMachine machine;
    power.values["balanced AC wake timers"] = possible ? 0 : 1;
    power.wakeTimerPolicy = policy;
    CHECK(WakePossible() == possible);
  }
}

TEST_CASE("the system's timer wakes no hardware that cannot be woken from hibernation") {
  const WakeableMachine machine;
  power.capabilities->bytes[PowerCapabilities::kTimerWake] = PowerCapabilities::kStateS4 - 1;
  CHECK_FALSE(WakePossible());
}

TEST_CASE("a timer that the system has refused to wake by wakes nothing") {
  const WakeableMachine machine;
  fakes::systemTimer.arming = WakeTimerArming::kCannotWake;
  DriverFuncCall.ArmDriverTimerDuration(TimerDurationPayload(10));
  CHECK_FALSE(WakePossible());
}

TEST_CASE("what the system does not tell is taken for no") {
  {
    const WakeableMachine machine;
    power.capabilities.reset();
    CHECK_FALSE(WakePossible());
  }
  // The power source, the active scheme and its value.
  for (const int call : {1, 2, 3}) {
    const WakeableMachine machine;
    power.failer = {.firstFailing = call};
    CHECK_FALSE(WakePossible());
  }
}

}  // namespace dozewell
