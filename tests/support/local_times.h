#ifndef DOZEWELL_TESTS_SUPPORT_LOCAL_TIMES_H_
#define DOZEWELL_TESTS_SUPPORT_LOCAL_TIMES_H_

#include <cstdint>

#include "base/wall_clock.h"

namespace dozewell {

// A local time with every field filled; the month counts from 1.
inline tm LocalTime(int32_t year, int32_t month, int32_t day, int32_t hour = 0, int32_t minute = 0,
                    int32_t second = 0) {
  tm time = {second, minute, hour, day, month - 1, year - 1900, 0, 0, 0};
  TmFromSeconds(SecondsFromTm(time), time);
  return time;
}

// A time in the week from Thursday 2026-11-19 to Wednesday 2026-11-25, with which a cycle of seven
// days begins: day 0 is the Thursday.
inline tm WeekTime(int32_t day, int32_t hour = 0, int32_t minute = 0, int32_t second = 0) {
  return LocalTime(2026, 11, 19 + day, hour, minute, second);
}

}  // namespace dozewell

#endif  // DOZEWELL_TESTS_SUPPORT_LOCAL_TIMES_H_
