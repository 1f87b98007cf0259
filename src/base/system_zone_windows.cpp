#include <stdlib.h>
#include <time.h>

#include <mutex>

#include "base/lock.h"
#include "base/system_zone.h"

namespace dozewell {
namespace {

// The runtime library has one zone for the whole process, which stays the same from here reading it
// to converting with it. Never destroyed, as other threads may convert while the process ends.
Lock& ZoneLock = *new Lock;

}  // namespace

bool LocalTimeInSystemZone(int64_t utcSeconds, tm& time) {
  // A machine-wide TZ would come before the system's zone. The runtime library looks for it in its
  // own copy of the environment, which only its own functions change.
  [[maybe_unused]] static const int removed = _wputenv(L"TZ=");
  const std::lock_guard guard(ZoneLock);
  // By itself the library reads the zone only once, and would not notice a journey.
  _tzset();
  const __time64_t seconds = utcSeconds;
  ::tm local;
  if (_localtime64_s(&local, &seconds) != 0) return false;
  time = {local.tm_sec,  local.tm_min,  local.tm_hour, local.tm_mday, local.tm_mon,
          local.tm_year, local.tm_wday, local.tm_yday, local.tm_isdst};
  return true;
}

}  // namespace dozewell
