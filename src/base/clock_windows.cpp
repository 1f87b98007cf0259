#include <time.h>

#include "base/clock.h"

namespace dozewell {

int64_t UtcSecondsNow() { return _time64(nullptr); }

bool LocalTimeNow(tm& time) {
  const __time64_t now = _time64(nullptr);
  ::tm local;
  if (now == -1 || _localtime64_s(&local, &now) != 0) return false;
  time = {local.tm_sec,  local.tm_min,  local.tm_hour, local.tm_mday, local.tm_mon,
          local.tm_year, local.tm_wday, local.tm_yday, local.tm_isdst};
  return true;
}

}  // namespace dozewell
