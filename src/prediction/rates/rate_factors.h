#ifndef DOZEWELL_PREDICTION_RATES_RATE_FACTORS_H_
#define DOZEWELL_PREDICTION_RATES_RATE_FACTORS_H_

#include <array>
#include <cstddef>

#include "prediction/rates/learnt_rates.h"
#include "prediction/rates/sleep_pieces.h"

namespace dozewell {

// The kinds of days: Monday to Friday, Saturday and Sunday.
inline constexpr size_t kDayKinds = 2;
constexpr size_t DayKindOf(size_t weekday) { return weekday == 0 || weekday == 6 ? 1 : 0; }

// What the rate of return consists of. A factor of 1 changes nothing. Part of a file, byte for
// byte.
struct RateFactors {
  // What is assumed before anything is learnt: two returns in two nights of eight hours, at any
  // time of day and after any time away.
  RateFactors();

  // Returns per second in a cell.
  double RateOf(const RateCell& cell) const;

  // Fits all factors to what was learnt, starting from what they are.
  void Fit(const LearntRates& learnt);

  bool operator==(const RateFactors&) const = default;

  double base;  // returns per second
  std::array<double, kAwayClasses> away;
  std::array<double, kClockCells> clockWide;
  std::array<double, kClockCells> clock;
  std::array<double, kDayKinds * kClockCells> kindWide;  // working days first
  std::array<double, kDayKinds * kClockCells> kind;
  std::array<double, kWeekdays> day;
  std::array<double, kClockCells * kAwayClasses> local;  // the classes of a clock cell together
};

}  // namespace dozewell

#endif  // DOZEWELL_PREDICTION_RATES_RATE_FACTORS_H_
