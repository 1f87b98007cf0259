#include "common/utc_time.h"

namespace dozewell {

std::optional<int64_t> UtcFromLocalTime(const tm& time) {
  const int64_t wanted = SecondsFromTm(time);
  int64_t utc = wanted;
  // The first step finds how far this machine is from UTC about that time. The second one mends it
  // where the clocks were changed in between.
  constexpr int kSteps = 2;
  for (int step = 0; step < kSteps; ++step) {
    tm local;
    if (!LocalTimeFromUtc(utc, local)) return std::nullopt;
    utc += wanted - SecondsFromTm(local);
  }
  return utc;
}

}  // namespace dozewell
