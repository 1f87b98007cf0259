#include "prediction/rates/sleep_pieces.h"

#include <iterator>

namespace dozewell {
static_assert(std::size(kAwayClassEdges) == kAwayClasses + 1);

size_t AwayClassOf(int64_t secondsAway) {
  const auto* const next = std::ranges::upper_bound(kAwayClassEdges, secondsAway);
  return static_cast<size_t>(next - std::begin(kAwayClassEdges)) - 1;
}

RateCell CellOf(int64_t suspend, int64_t moment) {
  const int64_t day = moment / kSecondsPerDay;
  return {static_cast<size_t>((day + kWeekdayOf1970) % int64_t{kWeekdays}),
          static_cast<size_t>(moment % kSecondsPerDay / kSecondsPerClockCell),
          AwayClassOf(moment - suspend)};
}

RateCell SleepPieces::Cell() const {
  const size_t clock = clockMarkOfWeek_ / 2;
  return {clock / kClockCells, clock % kClockCells, away_};
}

}  // namespace dozewell
