#ifndef DOZEWELL_POWER_WAKE_TIMER_H_
#define DOZEWELL_POWER_WAKE_TIMER_H_

#include <cstdint>

namespace dozewell {

// A timer of the system that wakes a sleeping machine. Nobody waits for it: it fires once, and is
// gone at the latest with the process. Any thread, but one at a time for one timer.

enum class WakeTimerArming {
  kArmed,
  kCannotWake,  // armed, but the system says that it will not wake this machine
  kFailed,
};

// Null when the system has none to give. The caller closes it with CloseWakeTimer.
void* CreateWakeTimer();

// Arms it for a time in seconds since 1970 (UTC), or anew when it was armed.
WakeTimerArming ArmWakeTimer(void* timer, int64_t utcSeconds);

void CancelWakeTimer(void* timer);
void CloseWakeTimer(void* timer);

}  // namespace dozewell

#endif  // DOZEWELL_POWER_WAKE_TIMER_H_
