#ifndef DOZEWELL_BASE_CLOCK_H_
#define DOZEWELL_BASE_CLOCK_H_

#include <cstdint>

#include "base/wall_clock.h"

namespace dozewell {

// Seconds since 1970-01-01 00:00 UTC, or -1 when the clock cannot be read. Any thread.
int64_t UtcSecondsNow();

// The local time now. False, with `time` left alone, when the clock cannot be read. Any thread.
bool LocalTimeNow(tm& time);

}  // namespace dozewell

#endif  // DOZEWELL_BASE_CLOCK_H_
