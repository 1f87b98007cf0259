#ifndef DOZEWELL_PREDICTION_RATES_SLEEP_PIECES_H_
#define DOZEWELL_PREDICTION_RATES_SLEEP_PIECES_H_

#include <cstddef>
#include <cstdint>

#include "base/wall_clock.h"

namespace dozewell {

// How returns are told apart: by the time of day, by how long the machine has been away, and by the
// day of the week.
inline constexpr size_t kClockCells = 72;  // of 20 minutes
inline constexpr size_t kAwayClasses = 10;
inline constexpr size_t kWeekdays = 7;
inline constexpr size_t kRateCells = kWeekdays * kClockCells * kAwayClasses;

inline constexpr int64_t kSecondsPerClockCell = 1200;

// A sleep is looked at no further than this.
inline constexpr int64_t kLongestSleepSeconds = 8 * kSecondsPerDay;

struct RateCell {
  size_t weekday;  // 0 is Sunday
  size_t clock;
  size_t away;

  size_t Index() const { return (weekday * kClockCells + clock) * kAwayClasses + away; }
  bool operator==(const RateCell&) const = default;
};

// The class of a time away.
size_t AwayClassOf(int64_t secondsAway);

// The cell of a moment of a sleep, both in wall-clock seconds.
RateCell CellOf(int64_t suspend, int64_t moment);

// A part of a sleep in which nothing changes that a rate depends on.
struct SleepPiece {
  int64_t start;  // wall-clock seconds
  int64_t seconds;
  RateCell cell;  // of its middle

  bool operator==(const SleepPiece&) const = default;
};

// The piece of a sleep that begins at `start`, which is `suspend` or the end of another piece. A
// piece ends at each ten minutes of the clock, at some minutes of the first hour away, and at
// `end`, which is later than `start`.
SleepPiece PieceFrom(int64_t suspend, int64_t start, int64_t end);

}  // namespace dozewell

#endif  // DOZEWELL_PREDICTION_RATES_SLEEP_PIECES_H_
