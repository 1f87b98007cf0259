#include "ctl/fakes/utc_time_fake.h"

#include "common/utc_time.h"

namespace dozewell {

int32_t fakes::utcOffsetSeconds = 0;

bool LocalTimeFromUtc(int64_t utcSeconds, tm& time) {
  tm local;
  if (!TmFromSeconds(utcSeconds + fakes::utcOffsetSeconds, local)) return false;
  time = local;
  return true;
}

}  // namespace dozewell
