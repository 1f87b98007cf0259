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

  const bool isTooLong = resume - suspend > kLongestSleepSeconds;
  const int64_t end = isTooLong ? suspend + kLongestSleepSeconds : resume;
  for (int64_t start = suspend; start < end;) {
    const SleepPiece piece = PieceFrom(suspend, start, end);
    secondsAway[piece.cell.Index()] += static_cast<float>(piece.seconds);
    start += piece.seconds;
    if (start == end && !isTooLong) returns[piece.cell.Index()] += 1.0F;
  }
  if (!isTooLong) {
    idleCount += 1;
    idleSeconds += static_cast<double>(resume - suspend);
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
