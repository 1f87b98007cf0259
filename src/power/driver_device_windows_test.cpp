#include <doctest/doctest.h>
#include <windows.h>

#include "power/device_io.h"
#include "power/driver_device.h"
#include "power/driver_timer.h"

namespace dozewell {

TEST_CASE("the invalid device is the system's invalid handle") {
  CHECK(kInvalidDevice == INVALID_HANDLE_VALUE);
}

TEST_CASE("on a machine without the driver the handle stays null and every operation fails") {
  CHECK_FALSE(FindDriverDevice());
  REQUIRE(DriverHandle == nullptr);
  SetLastError(ERROR_SUCCESS);
  TimerRecord record = {{1, 2}};
  CHECK_FALSE(ReadDriverTimer(record));
  CHECK(GetLastError() == ERROR_INVALID_HANDLE);
  CHECK(record == TimerRecord{{1, 2}});
  CHECK_FALSE(WriteDriverTimer(record));
  uint32_t status = 9;
  CHECK_FALSE(ReadPreviousSleepStatus(status));
  CHECK(status == 0);
  CHECK_FALSE(DriverFuncCall.ArmDriverTimerAlarm(1));
  CHECK_FALSE(DriverFuncCall.ArmDriverTimerDuration(1));
  CloseDriverDevice();
  CHECK(DriverHandle == nullptr);
}

// Any device can show that it gets the controls and that closing closes it.
TEST_CASE("a device that is open gets the controls and is closed") {
  const HANDLE nul = CreateFileW(L"NUL", GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                 OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  REQUIRE(nul != INVALID_HANDLE_VALUE);
  DriverHandle = nul;
  TimerRecord record;
  SetLastError(ERROR_SUCCESS);
  CHECK_FALSE(ReadDriverTimer(record));
  CHECK(GetLastError() != ERROR_INVALID_HANDLE);
  CHECK(GetLastError() != ERROR_SUCCESS);
  CloseDriverDevice();
  CHECK(DriverHandle == nullptr);
  DWORD flags = 0;
  CHECK_FALSE(GetHandleInformation(nul, &flags));
}

}  // namespace dozewell
