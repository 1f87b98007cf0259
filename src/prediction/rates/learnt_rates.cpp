#include "prediction/rates/learnt_rates.h"

#include <algorithm>

#include "base/wall_clock.h"
#include "prediction/rates/exponential.h"

namespace dozewell {

bool LearntRates::Learn(int64_t suspend, int64_t resume) {
  const int64_t previousResume = lastResume;
  lastResume = resume;
  if (resume <= suspend) return false;
  Fade(std::max<int64_t>(0, resume - previousResume));

  const int64_t length = resume - suspend;
  const bool isTooLong = length > kLongestSleepSeconds;
  size_t last = 0;
  for (SleepPieces pieces(suspend, std::min(length, kLongestSleepSeconds)); !pieces.AreOver();
       pieces.Next()) {
    last = pieces.Cell().Index();
    secondsAway[last] += static_cast<float>(pieces.Seconds());
  }
  if (!isTooLong) {
    returns[last] += 1.0F;
    idleCount += 1;
    idleSeconds += static_cast<double>(length);
  }
  ++sleeps;
  return true;
}

double LearntRates::MeanIdleSeconds() const {
  constexpr double kAssumedSleeps = 3;
  constexpr double kAssumedSeconds = 8 * 3600;
  return (kAssumedSleeps * kAssumedSeconds + idleSeconds) / (kAssumedSleeps + idleCount);
}

void LearntRates::Fade(int64_t seconds) {
  constexpr double kMemorySeconds = 120 * static_cast<double>(kSecondsPerDay);
  const double share = Exponential(-static_cast<double>(seconds) / kMemorySeconds);
  for (float& cell : secondsAway) cell = static_cast<float>(cell * share);
  for (float& cell : returns) cell = static_cast<float>(cell * share);
  idleCount *= share;
  idleSeconds *= share;
}

}  // namespace dozewell
