#ifndef DOZEWELL_CTL_UTC_TIME_H_
#define DOZEWELL_CTL_UTC_TIME_H_

#include <cstdint>

#include "base/wall_clock.h"

namespace dozewell::ctl {

// This machine's local time at a time in seconds since 1970, UTC, by today's rules of daylight
// saving. False, with `time` left alone, for one that the system cannot tell.
bool LocalTimeFromUtc(int64_t utcSeconds, tm& time);

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_UTC_TIME_H_
