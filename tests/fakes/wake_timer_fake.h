#ifndef DOZEWELL_TESTS_FAKES_WAKE_TIMER_FAKE_H_
#define DOZEWELL_TESTS_FAKES_WAKE_TIMER_FAKE_H_

#include <cstdint>
#include <optional>

#include "power/last_sleep.h"
#include "power/wake_timer.h"
#include "support/calls.h"

namespace dozewell::fakes {

// The system's timer, and what the system says of the machine's last sleep.
struct SystemTimer {
  bool available = true;
  WakeTimerArming arming = WakeTimerArming::kArmed;  // what an arming answers
  std::optional<int64_t> due;                        // seconds since 1970 (UTC), while armed
  std::optional<LastSleep> lastSleep;
  // In order: "create", "arm 1795219200", "cancel" and "close". In the journal behind "timer: ".
  Calls calls;
};
extern SystemTimer systemTimer;

// The machine slept from one time to another, in seconds since 1970 (UTC), as the system tells it
// at the fake clock's time.
void SetLastSleep(int64_t fellAsleep, int64_t woke);

}  // namespace dozewell::fakes

#endif  // DOZEWELL_TESTS_FAKES_WAKE_TIMER_FAKE_H_
