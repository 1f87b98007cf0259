#ifndef DOZEWELL_COMMON_UTC_TIME_H_
#define DOZEWELL_COMMON_UTC_TIME_H_

#include <cstdint>

#include "base/wall_clock.h"

namespace dozewell {

// This machine's local time at a time in seconds since 1970, UTC, by its own rules of daylight
// saving (on Windows, today's). False, with `time` left alone, for one that the system cannot tell.
bool LocalTimeFromUtc(int64_t utcSeconds, tm& time);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_UTC_TIME_H_
