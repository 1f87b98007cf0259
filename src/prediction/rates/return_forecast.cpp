#include "prediction/rates/return_forecast.h"

#include "prediction/rates/exponential.h"

namespace dozewell {

std::vector<ForecastPiece> ForecastReturn(const RateFactors& factors, int64_t suspend) {
  constexpr double kAllButCertain = 0.0001;
  // A piece for each ten minutes of the clock, and those of the first hour.
  constexpr size_t kMostPieces = kLongestSleepSeconds / 600 + 16;
  std::vector<ForecastPiece> pieces;
  pieces.reserve(kMostPieces);
  const int64_t end = suspend + kLongestSleepSeconds;
  double stillAway = 1;
  for (int64_t start = suspend; start < end && stillAway >= kAllButCertain;) {
    const SleepPiece piece = PieceFrom(suspend, start, end);
    const auto seconds = static_cast<double>(piece.seconds);
    const double after = stillAway * Exponential(-factors.RateOf(piece.cell) * seconds);
    pieces.push_back({start - suspend, seconds, stillAway, stillAway - after});
    stillAway = after;
    start += piece.seconds;
  }
  return pieces;
}

}  // namespace dozewell
