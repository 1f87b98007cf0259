#include <windows.h>

#include "power/wake_timer.h"

namespace dozewell {
namespace {

constexpr int64_t kTicksPerSecond = 10'000'000;
constexpr int64_t kSecondsFrom1601To1970 = 11'644'473'600;

// What powercfg /waketimers and the System log say of a wake.
wchar_t WakeReason[] = L"Dozewell Service: sleep ahead of the predicted use";

}  // namespace

void* CreateWakeTimer() { return CreateWaitableTimerW(nullptr, TRUE, nullptr); }

// A time of the calendar, since a timer for a duration stands still while the machine sleeps.
WakeTimerArming ArmWakeTimer(void* timer, int64_t utcSeconds) {
  LARGE_INTEGER due;
  due.QuadPart = (utcSeconds + kSecondsFrom1601To1970) * kTicksPerSecond;
  REASON_CONTEXT context = {};
  context.Version = POWER_REQUEST_CONTEXT_VERSION;
  context.Flags = POWER_REQUEST_CONTEXT_SIMPLE_STRING;
  context.Reason.SimpleReasonString = WakeReason;
  // A timer with a reason wakes the machine. Where it cannot, the call succeeds with an error.
  SetLastError(ERROR_SUCCESS);
  if (SetWaitableTimerEx(timer, &due, 0, nullptr, nullptr, &context, 0) == FALSE) {
    return WakeTimerArming::kFailed;
  }
  return GetLastError() == ERROR_NOT_SUPPORTED ? WakeTimerArming::kCannotWake
                                               : WakeTimerArming::kArmed;
}

void CancelWakeTimer(void* timer) { CancelWaitableTimer(timer); }

void CloseWakeTimer(void* timer) { CloseHandle(timer); }

}  // namespace dozewell
