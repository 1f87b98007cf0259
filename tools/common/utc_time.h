#ifndef DOZEWELL_COMMON_UTC_TIME_H_
#define DOZEWELL_COMMON_UTC_TIME_H_

#include <cstdint>
#include <optional>

#include "base/wall_clock.h"

namespace dozewell {

// Converts seconds since 1970, UTC, to this machine's local time, by its own rules of daylight
// saving (on Windows, today's). False when the system cannot; `time` is of no use then.
bool LocalTimeFromUtc(int64_t utcSeconds, tm& time);

// The inverse: seconds since 1970, UTC. A time that the clocks of this machine show twice means
// either of the two; one that they skip means one within the hour. Nothing when the system cannot.
std::optional<int64_t> UtcFromLocalTime(const tm& time);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_UTC_TIME_H_
