#include <windows.h>
// After windows.h, which it needs.
#include <powrprof.h>

#include "power/last_sleep.h"

namespace dozewell {
namespace {

bool ReadMilliseconds(POWER_INFORMATION_LEVEL level, uint64_t& milliseconds) {
  constexpr ULONGLONG kTicksPerMillisecond = 10'000;
  ULONGLONG ticks = 0;
  if (CallNtPowerInformation(level, nullptr, 0, &ticks, sizeof(ticks)) != 0) return false;
  milliseconds = ticks / kTicksPerMillisecond;
  return true;
}

}  // namespace

std::optional<LastSleep> ReadLastSleep() {
  LastSleep sleep = {};
  if (!ReadMilliseconds(LastSleepTime, sleep.fellAsleep) ||
      !ReadMilliseconds(LastWakeTime, sleep.woke)) {
    return std::nullopt;
  }
  sleep.now = GetTickCount64();
  return sleep;
}

}  // namespace dozewell
