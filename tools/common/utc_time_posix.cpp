#include <time.h>

#include "common/utc_time.h"

namespace dozewell {

bool LocalTimeFromUtc(int64_t utcSeconds, tm& time) {
  const time_t utc = utcSeconds;
  ::tm local;
  if (localtime_r(&utc, &local) == nullptr) return false;
  const tm fields = {local.tm_sec,  local.tm_min,  local.tm_hour,
                     local.tm_mday, local.tm_mon,  local.tm_year,
                     local.tm_wday, local.tm_yday, 0};
  // Refuses years outside 1970 to 3000.
  return TmFromSeconds(SecondsFromTm(fields), time);
}

}  // namespace dozewell
