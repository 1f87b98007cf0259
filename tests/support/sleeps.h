#ifndef DOZEWELL_TESTS_SUPPORT_SLEEPS_H_
#define DOZEWELL_TESTS_SUPPORT_SLEEPS_H_

#include <cmath>
#include <cstdint>

#include "base/wall_clock.h"
#include "support/local_times.h"

namespace dozewell {

// What tests of the rate predictor have in common.

inline constexpr int64_t kHour = 3600;
inline constexpr int64_t kDay = 24 * kHour;

// Monday 2026-01-05 22:00, in wall-clock seconds.
inline const int64_t kEvening = SecondsFromTm(LocalTime(2026, 1, 5, 22));

// A bell by the runtime library's exponential.
inline double BellAt(double distance, double sigma) {
  return std::exp(-(distance / sigma) * (distance / sigma) / 2);
}

}  // namespace dozewell

#endif  // DOZEWELL_TESTS_SUPPORT_SLEEPS_H_
