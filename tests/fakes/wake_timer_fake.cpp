#include "fakes/wake_timer_fake.h"

#include <string>

#include "fakes/clock_fake.h"
#include "fakes/journal.h"

namespace dozewell {
namespace fakes {

SystemTimer systemTimer;

namespace {

// When the system was started, in seconds since 1970.
constexpr int64_t kSystemStart = 1700000000;

uint64_t MillisecondsAt(int64_t utcSeconds) {
  return static_cast<uint64_t>(utcSeconds - kSystemStart) * 1000;
}

void NoteTimerCall(const std::string& call) {
  systemTimer.calls.push_back(call);
  journal.push_back("timer: " + call);
}

}  // namespace

void SetLastSleep(int64_t fellAsleep, int64_t woke) {
  systemTimer.lastSleep = {MillisecondsAt(fellAsleep), MillisecondsAt(woke), 0};
}

}  // namespace fakes

using fakes::systemTimer;

void* CreateWakeTimer() {
  fakes::NoteTimerCall("create");
  return systemTimer.available ? &systemTimer : nullptr;
}

WakeTimerArming ArmWakeTimer(void*, int64_t utcSeconds) {
  fakes::NoteTimerCall("arm " + std::to_string(utcSeconds));
  if (systemTimer.arming != WakeTimerArming::kFailed) systemTimer.due = utcSeconds;
  return systemTimer.arming;
}

void CancelWakeTimer(void*) {
  fakes::NoteTimerCall("cancel");
  systemTimer.due.reset();
}

void CloseWakeTimer(void*) {
  fakes::NoteTimerCall("close");
  systemTimer.due.reset();
}

std::optional<LastSleep> ReadLastSleep() {
  std::optional<LastSleep> sleep = systemTimer.lastSleep;
  if (sleep) sleep->now = fakes::MillisecondsAt(fakes::clock.utcSeconds);
  return sleep;
}

}  // namespace dozewell
