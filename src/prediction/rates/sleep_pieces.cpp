#include "prediction/rates/sleep_pieces.h"

#include <algorithm>
#include <iterator>

#include "base/wall_clock.h"

namespace dozewell {
namespace {

constexpr int64_t kMinute = 60;
constexpr int64_t kHour = 3600;
constexpr int64_t kClockMark = 10 * kMinute;

// Where each class begins.
constexpr int64_t kAwayClassEdges[] = {0,          3 * kMinute,   10 * kMinute, 25 * kMinute,
                                       kHour,      5 * kHour / 2, 6 * kHour,    12 * kHour,
                                       24 * kHour, 60 * kHour};

static_assert(std::size(kAwayClassEdges) == kAwayClasses);

// In minutes away.
constexpr int64_t kAwayMarks[] = {1, 2, 3, 5, 7, 10, 15, 20, 25, 30, 40, 50, 60};

int64_t NextMark(int64_t suspend, int64_t start) {
  const int64_t clockMark = (start / kClockMark + 1) * kClockMark;
  const auto* const awayMark = std::ranges::upper_bound(kAwayMarks, (start - suspend) / kMinute);
  if (awayMark == std::end(kAwayMarks)) return clockMark;
  return std::min(clockMark, suspend + *awayMark * kMinute);
}

}  // namespace

size_t AwayClassOf(int64_t secondsAway) {
  const auto* const next = std::ranges::upper_bound(kAwayClassEdges, secondsAway);
  return static_cast<size_t>(next - std::begin(kAwayClassEdges)) - 1;
}

RateCell CellOf(int64_t suspend, int64_t moment) {
  constexpr int64_t kWeekdayOf1970 = 4;  // its first day was a Thursday
  const int64_t day = moment / kSecondsPerDay;
  return {static_cast<size_t>((day + kWeekdayOf1970) % int64_t{kWeekdays}),
          static_cast<size_t>(moment % kSecondsPerDay / kSecondsPerClockCell),
          AwayClassOf(moment - suspend)};
}

SleepPiece PieceFrom(int64_t suspend, int64_t start, int64_t end) {
  const int64_t seconds = std::min(NextMark(suspend, start), end) - start;
  return {start, seconds, CellOf(suspend, start + seconds / 2)};
}

}  // namespace dozewell
