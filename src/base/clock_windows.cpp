#include <time.h>

#include "base/clock.h"
#include "base/system_zone.h"

namespace dozewell {

int64_t UtcSecondsNow() { return _time64(nullptr); }

bool LocalTimeNow(tm& time) {
  const int64_t now = UtcSecondsNow();
  return now != -1 && LocalTimeInSystemZone(now, time);
}

}  // namespace dozewell
