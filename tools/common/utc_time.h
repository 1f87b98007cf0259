#ifndef DOZEWELL_COMMON_UTC_TIME_H_
#define DOZEWELL_COMMON_UTC_TIME_H_

#include <cstdint>

#include "base/wall_clock.h"

namespace dozewell {

// Converts seconds since 1970, UTC, to this machine's local time, by its own rules of daylight
// saving (on Windows, today's). False when the system cannot; `time` is of no use then.
bool LocalTimeFromUtc(int64_t utcSeconds, tm& time);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_UTC_TIME_H_
