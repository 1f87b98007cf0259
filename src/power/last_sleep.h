#ifndef DOZEWELL_POWER_LAST_SLEEP_H_
#define DOZEWELL_POWER_LAST_SLEEP_H_

#include <cstdint>
#include <optional>

namespace dozewell {

// The machine's last sleep by the clock that counts from the system's start on, through sleep and
// hibernation, in milliseconds.
struct LastSleep {
  uint64_t fellAsleep;
  uint64_t woke;
  uint64_t now;
};

// Nothing when the system does not tell. Any thread.
std::optional<LastSleep> ReadLastSleep();

}  // namespace dozewell

#endif  // DOZEWELL_POWER_LAST_SLEEP_H_
