#include "power/driver_timer.h"

#include <doctest/doctest.h>

#include <cstdint>
#include <string>
#include <type_traits>
#include <vector>

#include "fakes/driver_fake.h"
#include "power/device_io.h"
#include "power/driver_device.h"
#include "power/open_driver_device.h"
#include "support/calls.h"

namespace dozewell {
namespace {

static_assert(sizeof(CDriverFuncCall) == sizeof(void*));
static_assert(std::has_virtual_destructor_v<CDriverFuncCall>);

void OpenDriverWith(uint32_t word0, uint32_t word1) {
  fakes::ResetDriver();
  OpenDriverDevice();
  fakes::driver.timer = {{word0, word1}};
  fakes::driver.calls.clear();
}

}  // namespace

TEST_CASE("the timer record is read as the driver gives it") {
  OpenDriverWith(0x12345678, 0xC0000005);
  TimerRecord record;
  CHECK(ReadDriverTimer(record));
  CHECK(record == TimerRecord{{0x12345678, 0xC0000005}});
  CHECK(fakes::driver.calls == Calls{"read timer"});
}

TEST_CASE("the timer record is written as it stands") {
  OpenDriverWith(0, 0);
  CHECK(WriteDriverTimer({{0x7FFFFFFF, 0x80000001}}));
  CHECK(fakes::driver.timer == TimerRecord{{0x7FFFFFFF, 0x80000001}});
  CHECK(fakes::driver.calls == Calls{"write timer 7fffffff 80000001"});
}

TEST_CASE("the previous sleep status is read as the driver gives it") {
  for (const uint32_t given :
       {uint32_t{0}, kSleepWentOnToHibernation, kSleepEndedByTimer, uint32_t{0xFFFFFFFF}}) {
    OpenDriverWith(0, 0);
    fakes::driver.previousSleepStatus = given;
    uint32_t status = 9;
    CHECK(ReadPreviousSleepStatus(status));
    CHECK(status == given);
    CHECK(fakes::driver.calls == Calls{"read previous sleep status"});
  }
}

TEST_CASE("a previous sleep status that cannot be read is 0") {
  OpenDriverWith(0, 0);
  fakes::driver.previousSleepStatus = 5;
  fakes::driver.failer.firstFailing = 1;
  uint32_t status = 9;
  CHECK_FALSE(ReadPreviousSleepStatus(status));
  CHECK(status == 0);
}

TEST_CASE("a failed read or write of the timer answers false and changes nothing") {
  OpenDriverWith(1, 2);
  fakes::driver.failer = {.firstFailing = 1, .failures = 2};
  TimerRecord record = {{7, 8}};
  CHECK_FALSE(ReadDriverTimer(record));
  CHECK(record == TimerRecord{{7, 8}});
  CHECK_FALSE(WriteDriverTimer(record));
  CHECK(fakes::driver.timer == TimerRecord{{1, 2}});
}

TEST_CASE("arming replaces bits 0 to 27 of its word, sets bit 31 and keeps all else") {
  struct Row {
    uint32_t old;
    uint32_t payload;
    uint32_t armed;
  };
  const Row rows[] = {
      {0x00000000, 0x00000000, 0x80000000}, {0x00000000, 0x0FFFFFFF, 0x8FFFFFFF},
      {0x0FFFFFFF, 0x00000000, 0x80000000}, {0x0FFFFFFF, 0x08000005, 0x88000005},
      {0x10000000, 0xFFFFFFFF, 0x9FFFFFFF}, {0x20000000, 0xF0000001, 0xA0000001},
      {0x40000000, 0x12345678, 0xC2345678}, {0x80000000, 0x80000000, 0x80000000},
      {0xFFFFFFFF, 0x70000000, 0xF0000000}, {0x7ABCDEF0, 0x01234567, 0xF1234567},
  };
  const uint32_t other = 0x3C5A96F1;
  for (const Row& row : rows) {
    CAPTURE(row.old);
    CAPTURE(row.payload);
    OpenDriverWith(row.old, other);
    CHECK(DriverFuncCall.ArmDriverTimerAlarm(row.payload));
    CHECK(fakes::driver.timer == TimerRecord{{row.armed, other}});

    OpenDriverWith(other, row.old);
    CHECK(DriverFuncCall.ArmDriverTimerDuration(row.payload));
    CHECK(fakes::driver.timer == TimerRecord{{other, row.armed}});
  }
}

TEST_CASE("arming reads the record once and writes it once") {
  OpenDriverWith(0x40000001, 0x60000002);
  CHECK(DriverFuncCall.ArmDriverTimerDuration(TimerDurationPayload(30)));
  CHECK(DriverFuncCall.ArmDriverTimerAlarm(5));
  CHECK(fakes::driver.calls == Calls{"read timer", "write timer 40000001 e800001e", "read timer",
                                     "write timer c0000005 e800001e"});
}

TEST_CASE("arming fails with the read, and then writes nothing, or with the write") {
  using Arm = bool (CDriverFuncCall::*)(uint32_t);
  for (const Arm arm :
       {&CDriverFuncCall::ArmDriverTimerAlarm, &CDriverFuncCall::ArmDriverTimerDuration}) {
    OpenDriverWith(1, 2);
    fakes::driver.failer.firstFailing = 1;
    CHECK_FALSE((DriverFuncCall.*arm)(3));
    CHECK(fakes::driver.calls == Calls{"read timer"});
    CHECK(fakes::driver.timer == TimerRecord{{1, 2}});

    OpenDriverWith(1, 2);
    fakes::driver.failer.firstFailing = 2;
    CHECK_FALSE((DriverFuncCall.*arm)(3));
    CHECK(fakes::driver.failer.calls == 2);
    CHECK(fakes::driver.timer == TimerRecord{{1, 2}});
  }
}

TEST_CASE("without a device every operation is tried once on the null handle and fails") {
  fakes::ResetDriver();
  fakes::driver.present = false;
  OpenDriverDevice();
  TimerRecord record;
  uint32_t status = 9;
  CHECK_FALSE(ReadDriverTimer(record));
  CHECK_FALSE(WriteDriverTimer({{1, 2}}));
  CHECK_FALSE(ReadPreviousSleepStatus(status));
  CHECK(status == 0);
  CHECK_FALSE(DriverFuncCall.ArmDriverTimerAlarm(3));
  CHECK_FALSE(DriverFuncCall.ArmDriverTimerDuration(4));
  CHECK(fakes::driver.calls == Calls{"open", "read timer on no device",
                                     "write timer 00000001 00000002 on no device",
                                     "read previous sleep status on no device",
                                     "read timer on no device", "read timer on no device"});
}

TEST_CASE("on the invalid handle every operation fails without a control") {
  fakes::ResetDriver();
  DriverHandle = kInvalidDevice;
  TimerRecord record;
  uint32_t status = 9;
  CHECK_FALSE(ReadDriverTimer(record));
  CHECK_FALSE(WriteDriverTimer({{1, 2}}));
  CHECK_FALSE(ReadPreviousSleepStatus(status));
  CHECK(status == 0);
  CHECK_FALSE(DriverFuncCall.ArmDriverTimerAlarm(3));
  CHECK_FALSE(DriverFuncCall.ArmDriverTimerDuration(4));
  CHECK(fakes::driver.calls == Calls{});
  fakes::ResetDriver();
}

TEST_CASE("a duration's payload is its minutes in 20 bits with bit 27 set") {
  CHECK(TimerDurationPayload(0) == 0x08000000);
  CHECK(TimerDurationPayload(1) == 0x08000001);
  CHECK(TimerDurationPayload(0x000FFFFF) == 0x080FFFFF);
  CHECK(TimerDurationPayload(0x00100000) == 0x08000000);
  CHECK(TimerDurationPayload(0x00123456) == 0x08023456);
  CHECK(TimerDurationPayload(0xFFFFFFFF) == 0x080FFFFF);
}

TEST_CASE("the flags of a timer word are where the driver has them") {
  CHECK(kTimerEnabled == uint32_t{1} << 31);
  CHECK(kTimerExpired == uint32_t{1} << 30);
  CHECK(kTimerPayload == (uint32_t{1} << 28) - 1);
  CHECK(kSleepWentOnToHibernation == 4);
  CHECK(kSleepEndedByTimer == 5);
}

}  // namespace dozewell
