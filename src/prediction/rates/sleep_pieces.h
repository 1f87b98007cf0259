#ifndef DOZEWELL_PREDICTION_RATES_SLEEP_PIECES_H_
#define DOZEWELL_PREDICTION_RATES_SLEEP_PIECES_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "base/wall_clock.h"

namespace dozewell {

// How returns are told apart: by the time of day, by how long the machine has been away, and by the
// day of the week.
inline constexpr size_t kClockCells = 72;  // of 20 minutes
inline constexpr size_t kAwayClasses = 10;
inline constexpr size_t kWeekdays = 7;
inline constexpr size_t kClockCellsOfWeek = kWeekdays * kClockCells;
inline constexpr size_t kRateCells = kClockCellsOfWeek * kAwayClasses;

inline constexpr int64_t kSecondsPerClockCell = 1200;

inline constexpr int64_t kWeekdayOf1970 = 4;  // its first day was a Thursday

// A sleep is looked at no further than this.
inline constexpr int64_t kLongestSleepSeconds = 8 * kSecondsPerDay;

struct RateCell {
  size_t weekday;  // 0 is Sunday
  size_t clock;
  size_t away;

  size_t ClockOfWeek() const { return weekday * kClockCells + clock; }
  size_t Index() const { return ClockOfWeek() * kAwayClasses + away; }
  bool operator==(const RateCell&) const = default;
};

template <typename Visit>
void ForEachCell(Visit visit) {
  for (size_t weekday = 0; weekday < kWeekdays; ++weekday) {
    for (size_t clock = 0; clock < kClockCells; ++clock) {
      for (size_t away = 0; away < kAwayClasses; ++away) visit(RateCell{weekday, clock, away});
    }
  }
}

// Where each class of time away begins, and where the last one ends: nowhere.
inline constexpr int64_t kAwayClassEdges[] = {0,     180,   600,   1500,   3600,     9000,
                                              21600, 43200, 86400, 216000, INT64_MAX};

// The class of a time away.
size_t AwayClassOf(int64_t secondsAway);

// The cell of a moment of a sleep, both in wall-clock seconds.
RateCell CellOf(int64_t suspend, int64_t moment);

// A sleep is cut at these marks of the clock, two to a clock cell, and of the time away.
inline constexpr int64_t kClockMark = 600;
inline constexpr size_t kClockMarksOfWeek = 2 * kClockCellsOfWeek;
inline constexpr int64_t kLastAwayMark = 3600;
inline constexpr int64_t kAwayMarks[] = {60,   120,  180,  300,  420,  600,           900,
                                         1200, 1500, 1800, 2400, 3000, kLastAwayMark, INT64_MAX};

// Goes through the pieces of a sleep in which nothing changes that a rate depends on: from mark to
// mark, the last piece to the end. A piece belongs to the cell of its middle.
class SleepPieces {
 public:
  // Begins with the first piece of a sleep at a wall-clock time that lasts for `length` seconds.
  SleepPieces(int64_t suspend, int64_t length)
      : length_(length),
        clockMark_(kClockMark - suspend % kClockMark),
        clockMarkOfWeek_(
            static_cast<size_t>((suspend + kWeekdayOf1970 * kSecondsPerDay) / kClockMark) %
            kClockMarksOfWeek) {
    FindEnd();
  }

  bool AreOver() const { return start_ >= length_; }
  void Next() {
    start_ += seconds_;
    if (start_ == clockMark_) {
      clockMark_ += kClockMark;
      if (++clockMarkOfWeek_ == kClockMarksOfWeek) clockMarkOfWeek_ = 0;
    }
    if (start_ == *awayMark_) ++awayMark_;
    FindEnd();
  }

  int64_t Start() const { return start_; }  // in seconds away
  int64_t Seconds() const { return seconds_; }
  // The ten minutes of the week that the piece lies in, from Sunday 00:00 on.
  size_t ClockMarkOfWeek() const { return clockMarkOfWeek_; }
  size_t AwayClass() const { return away_; }
  RateCell Cell() const;

 private:
  void FindEnd() {
    seconds_ = std::min({clockMark_, *awayMark_, length_}) - start_;
    while (start_ + seconds_ / 2 >= kAwayClassEdges[away_ + 1]) ++away_;
  }

  int64_t length_;
  int64_t start_ = 0;
  int64_t seconds_ = 0;
  // The next marks, in seconds away.
  int64_t clockMark_;
  const int64_t* awayMark_ = kAwayMarks;
  size_t clockMarkOfWeek_;
  size_t away_ = 0;
};

}  // namespace dozewell

#endif  // DOZEWELL_PREDICTION_RATES_SLEEP_PIECES_H_
