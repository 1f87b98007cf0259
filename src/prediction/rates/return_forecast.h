#ifndef DOZEWELL_PREDICTION_RATES_RETURN_FORECAST_H_
#define DOZEWELL_PREDICTION_RATES_RETURN_FORECAST_H_

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "prediction/rates/exponential.h"
#include "prediction/rates/rate_factors.h"
#include "prediction/rates/sleep_pieces.h"

namespace dozewell {

// The rates of return in all cells, ready for forecasts. Nearly all of a forecast consists of
// pieces of ten minutes, so what they come to is computed here, after a fit: a suspend waits for
// its forecast, and nobody waits for a fit.
class ReturnRates {
 public:
  explicit ReturnRates(const RateFactors& factors);

  // In a class of time away and a clock cell of the week, from Sunday on: returns per second, and
  // the probability that nobody comes back in ten minutes.
  double PerSecond(size_t away, size_t clock) const { return perSecond_[away][clock]; }
  double NobodyInTenMinutes(size_t away, size_t clock) const {
    return nobodyInTenMinutes_[away][clock];
  }

 private:
  using Cells = std::array<std::array<double, kClockCellsOfWeek>, kAwayClasses>;

  Cells perSecond_;
  Cells nobodyInTenMinutes_;
};

// The same rates, each computed when it is asked for: less work where one forecast is all that is
// made after a fit. The factors must outlive the object.
class RatesAsAsked {
 public:
  explicit RatesAsAsked(const RateFactors& factors) : factors_(factors) {}

  double PerSecond(size_t away, size_t clock) const {
    return factors_.RateOf({clock / kClockCells, clock % kClockCells, away});
  }
  double NobodyInTenMinutes(size_t away, size_t clock) const {
    return Exponential(-PerSecond(away, clock) * static_cast<double>(kClockMark));
  }

 private:
  const RateFactors& factors_;
};

// A piece of a sleep to come.
struct ForecastPiece {
  int64_t start;     // seconds after the suspend
  double seconds;    // its length
  double stillAway;  // the probability that nobody came back before it
  double returning;  // the probability that somebody comes back in it
};

// A forecast goes as far as sleeps are looked at, with a piece for each ten minutes of the clock
// and those of the first hour.
inline constexpr size_t kMostForecastPieces = kLongestSleepSeconds / kClockMark + 16;

// Tells `visit` when somebody comes back after a suspend at a wall-clock time: the pieces of the
// sleep, one after the other, up to eight days, or until a return is all but certain.
template <typename Rates, typename Visit>
void ForecastReturn(const Rates& rates, int64_t suspend, Visit visit) {
  constexpr double kAllButCertain = 0.0001;
  double stillAway = 1;
  const auto tell = [&](int64_t start, double seconds, double nobody) {
    const double after = stillAway * nobody;
    visit(ForecastPiece{start, seconds, stillAway, stillAway - after});
    stillAway = after;
  };
  const auto tellPart = [&](int64_t start, int64_t length, size_t away, size_t clockMark) {
    const auto seconds = static_cast<double>(length);
    tell(start, seconds, Exponential(-rates.PerSecond(away, clockMark / 2) * seconds));
  };

  SleepPieces pieces(suspend, kLongestSleepSeconds);
  for (; pieces.Start() < kLastAwayMark || pieces.Seconds() < kClockMark; pieces.Next()) {
    tellPart(pieces.Start(), pieces.Seconds(), pieces.AwayClass(), pieces.ClockMarkOfWeek());
    if (stillAway < kAllButCertain) return;
  }

  // From here on pieces are ten minutes long, until eight days cut one off.
  constexpr int64_t kLastWholePiece = kLongestSleepSeconds - kClockMark;
  int64_t start = pieces.Start();
  size_t clockMark = pieces.ClockMarkOfWeek();
  for (size_t away = pieces.AwayClass(); start <= kLastWholePiece; ++away) {
    // The last one whose middle lies in this class.
    const int64_t last = std::min(kLastWholePiece, kAwayClassEdges[away + 1] - kClockMark / 2 - 1);
    for (; start <= last; start += kClockMark) {
      tell(start, kClockMark, rates.NobodyInTenMinutes(away, clockMark / 2));
      if (stillAway < kAllButCertain) return;
      if (++clockMark == kClockMarksOfWeek) clockMark = 0;
    }
  }
  if (start < kLongestSleepSeconds) {
    tellPart(start, kLongestSleepSeconds - start, kAwayClasses - 1, clockMark);
  }
}

}  // namespace dozewell

#endif  // DOZEWELL_PREDICTION_RATES_RETURN_FORECAST_H_
