#include "power/open_driver_device.h"

#include <doctest/doctest.h>

#include "fakes/driver_fake.h"
#include "fakes/journal.h"
#include "fakes/machine.h"
#include "fakes/settings_fake.h"
#include "fakes/wake_timer_fake.h"
#include "power/driver_device.h"
#include "settings/setting_names.h"

namespace dozewell {
namespace {

void Choose(const char* wakeTimer) {
  fakes::settings.current.predictorValues[{kPredictorSection, kWakeTimerName}] =
      fakes::Text(wakeTimer);
}

Calls Opened() {
  fakes::TakeJournal();
  OpenDriverDevice();
  return fakes::TakeJournal();
}

}  // namespace

TEST_CASE("the driver comes first, and then nothing else is asked") {
  const fakes::Machine machine;
  Choose("windows");
  fakes::settings.calls.clear();
  CHECK(Opened() == Calls{"driver: open"});
  CHECK(fakes::settings.calls == Calls{});
  CHECK(DriverHandle == &fakes::driver);
  CHECK(DeviceStandIn == nullptr);
}

TEST_CASE("without the driver only the value windows puts the system's timer in its place") {
  for (const char* const value : {"", "driver", "Windows", "windows ", "1"}) {
    const fakes::Machine machine;
    fakes::driver.present = false;
    Choose(value);
    CHECK(Opened() == Calls{"driver: open"});
    CHECK(DeviceStandIn == nullptr);
  }
  const fakes::Machine machine;
  fakes::driver.present = false;
  Choose("windows");
  CHECK(Opened() ==
        Calls{"driver: open", "timer: create", "settings: WriteSetting WindowsTimerState 1"});
  CHECK(DeviceStandIn != nullptr);
  CHECK(DriverHandle == nullptr);
}

TEST_CASE("a system that has no timer to give leaves the service without") {
  const fakes::Machine machine;
  fakes::driver.present = false;
  fakes::systemTimer.available = false;
  Choose("windows");
  CHECK(Opened() == Calls{"driver: open", "timer: create"});
  CHECK(DeviceStandIn == nullptr);
}

}  // namespace dozewell
