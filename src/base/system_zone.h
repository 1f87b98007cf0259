#ifndef DOZEWELL_BASE_SYSTEM_ZONE_H_
#define DOZEWELL_BASE_SYSTEM_ZONE_H_

#include <cstdint>

#include "base/wall_clock.h"

namespace dozewell {

// The local time of a moment, in seconds since 1970-01-01 00:00 UTC, in the time zone that the
// system has now, whatever the environment says. False, with `time` left alone, for a moment that
// has none. Any thread.
bool LocalTimeInSystemZone(int64_t utcSeconds, tm& time);

}  // namespace dozewell

#endif  // DOZEWELL_BASE_SYSTEM_ZONE_H_
