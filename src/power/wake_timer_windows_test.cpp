#include <doctest/doctest.h>
#include <windows.h>

#include <cstdint>
#include <string>

#include "base/clock.h"
#include "power/wake_timer.h"
#include "support/calls.h"
#include "support/system_calls_windows.h"

namespace dozewell {

using namespace support;

namespace {

constexpr int64_t kAnHour = 3600;

using ArmCall = BOOL(HANDLE, const LARGE_INTEGER*, LONG, PTIMERAPCROUTINE, LPVOID, PREASON_CONTEXT,
                     ULONG);
using ArmStub = ImportStub<"SetWaitableTimerEx", ArmCall>;

struct OpenTimer {
  void* timer = CreateWakeTimer();

  ~OpenTimer() { CloseWakeTimer(timer); }

  bool FiresWithin(DWORD milliseconds) const {
    return WaitForSingleObject(timer, milliseconds) == WAIT_OBJECT_0;
  }
};

}  // namespace

TEST_CASE("the timer is armed once, for a time of the calendar, with the reason for a wake") {
  int64_t due = 0;
  std::wstring reason;
  const ArmStub arm{[&](HANDLE timer, const LARGE_INTEGER* time, LONG period,
                        PTIMERAPCROUTINE routine, LPVOID argument, PREASON_CONTEXT context,
                        ULONG delay) {
    CHECK(timer == reinterpret_cast<HANDLE>(0x1234));
    due = time->QuadPart;
    CHECK(period == 0);
    CHECK((routine == nullptr));
    CHECK(argument == nullptr);
    CHECK(context->Version == POWER_REQUEST_CONTEXT_VERSION);
    CHECK(context->Flags == POWER_REQUEST_CONTEXT_SIMPLE_STRING);
    reason = context->Reason.SimpleReasonString;
    CHECK(delay == 0);
    return TRUE;
  }};
  // 2026-11-21 08:05:09 UTC, and the same in tenths of microseconds since 1601.
  CHECK(ArmWakeTimer(reinterpret_cast<void*>(0x1234), 1795248309) == WakeTimerArming::kArmed);
  CHECK(due == 134'397'219'090'000'000);
  CHECK(reason == L"Dozewell Service: sleep ahead of the predicted use");
  TakeSystemCalls();
}

TEST_CASE("a success with the error that nothing is supported is a timer that does not wake") {
  struct Row {
    BOOL done;
    DWORD error;
    WakeTimerArming arming;
  };
  for (const Row& row : {Row{TRUE, ERROR_SUCCESS, WakeTimerArming::kArmed},
                         {TRUE, ERROR_NOT_SUPPORTED, WakeTimerArming::kCannotWake},
                         {TRUE, ERROR_INVALID_HANDLE, WakeTimerArming::kArmed},
                         {FALSE, ERROR_NOT_SUPPORTED, WakeTimerArming::kFailed}}) {
    const ArmStub arm{
        [&](HANDLE, const LARGE_INTEGER*, LONG, PTIMERAPCROUTINE, LPVOID, PREASON_CONTEXT, ULONG) {
          if (row.error != ERROR_SUCCESS) SetLastError(row.error);
          return row.done;
        }};
    // What an earlier call has left says nothing.
    SetLastError(ERROR_NOT_SUPPORTED);
    CHECK(ArmWakeTimer(nullptr, 1795248309) == row.arming);
  }
  TakeSystemCalls();
}

TEST_CASE("the timer fires at the time that it was armed for last, and stays so") {
  const OpenTimer open;
  REQUIRE(open.timer != nullptr);
  CHECK_FALSE(open.FiresWithin(0));
  CHECK(ArmWakeTimer(open.timer, UtcSecondsNow() + kAnHour) != WakeTimerArming::kFailed);
  CHECK_FALSE(open.FiresWithin(100));
  CHECK(ArmWakeTimer(open.timer, UtcSecondsNow() + 1) != WakeTimerArming::kFailed);
  CHECK(open.FiresWithin(30000));
  CHECK(open.FiresWithin(0));
}

TEST_CASE("the timer does not fire after it was cancelled") {
  const OpenTimer open;
  REQUIRE(open.timer != nullptr);
  CHECK(ArmWakeTimer(open.timer, UtcSecondsNow() + 1) != WakeTimerArming::kFailed);
  CancelWakeTimer(open.timer);
  CHECK_FALSE(open.FiresWithin(2000));
}

}  // namespace dozewell
