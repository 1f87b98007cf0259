#include "power/driver_device.h"

#include <doctest/doctest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "fakes/driver_fake.h"
#include "power/device_io.h"
#include "support/calls.h"

namespace dozewell {

TEST_CASE("the driver's device is opened once and closed once") {
  fakes::ResetDriver();
  CHECK(DriverHandle == nullptr);
  CHECK(FindDriverDevice());
  CHECK(DriverHandle == &fakes::driver);
  CloseDriverDevice();
  CHECK(DriverHandle == nullptr);
  CloseDriverDevice();
  CHECK(fakes::driver.calls == Calls{"open", "close"});
}

TEST_CASE("without a device the handle stays null and is not closed") {
  fakes::ResetDriver();
  fakes::driver.present = false;
  CHECK_FALSE(FindDriverDevice());
  CHECK(DriverHandle == nullptr);
  CloseDriverDevice();
  CHECK(fakes::driver.calls == Calls{"open"});
}

TEST_CASE("there is a device while one is open") {
  fakes::ResetDriver();
  CHECK_FALSE(HasDriverDevice());
  FindDriverDevice();
  CHECK(HasDriverDevice());
  CloseDriverDevice();
  CHECK_FALSE(HasDriverDevice());
  DriverHandle = kInvalidDevice;
  CHECK_FALSE(HasDriverDevice());
  fakes::ResetDriver();
}

TEST_CASE("a control on the null handle is tried and fails") {
  fakes::ResetDriver();
  uint32_t status = 9;
  CHECK_FALSE(CallDriver(0x9C402410, nullptr, 0, &status, sizeof(status)));
  CHECK(status == 9);
  CHECK(fakes::driver.calls == Calls{"read previous sleep status on no device"});
}

TEST_CASE("a control on the invalid handle is not tried and fails") {
  fakes::ResetDriver();
  DriverHandle = kInvalidDevice;
  uint32_t status = 9;
  CHECK_FALSE(CallDriver(0x9C402410, nullptr, 0, &status, sizeof(status)));
  CHECK(status == 9);
  CHECK(fakes::driver.calls == Calls{});
  fakes::ResetDriver();
}

TEST_CASE("a control passes its code and buffers on and answers what the driver does") {
  fakes::ResetDriver();
  FindDriverDevice();
  fakes::driver.previousSleepStatus = 5;
  uint32_t status = 9;
  CHECK(CallDriver(0x9C402410, nullptr, 0, &status, sizeof(status)));
  CHECK(status == 5);
  CHECK_FALSE(CallDriver(0x9C40240C, &status, 4, &status, 2));
  CHECK(fakes::driver.calls == Calls{"open", "read previous sleep status", "control 9c40240c 4 2"});
}

}  // namespace dozewell
