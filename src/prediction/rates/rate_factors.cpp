#include "prediction/rates/rate_factors.h"

#include <span>
#include <vector>

#include "prediction/rates/smoothing.h"

namespace dozewell {
namespace {

constexpr int kRoundsOfFit = 2;

// What base counts before anything is learnt: two returns in two nights of eight hours.
constexpr double kAssumedReturns = 2;
constexpr double kAssumedSeconds = 2 * 8 * 3600;

constexpr size_t KindIndex(size_t weekday, size_t clock) {
  return DayKindOf(weekday) * kClockCells + clock;
}
constexpr size_t LocalIndex(size_t clock, size_t away) { return clock * kAwayClasses + away; }

constexpr double CellsOfMinutes(double minutes) { return minutes * 60 / kSecondsPerClockCell; }

// Numbers by what one kind of factor tells apart.
using ByAway = std::array<double, kAwayClasses>;
using ByClock = std::array<double, kClockCells>;  // of both kinds of days
using ByKind = std::array<double, kDayKinds * kClockCells>;
using ByWeekday = std::array<double, kWeekdays>;
using ByLocal = std::array<double, kClockCells * kAwayClasses>;

// Visits each clock cell of each weekday, with the index of the first of its classes of time away
// in a table of all cells.
template <typename Visit>
void ForEachClock(Visit visit) {
  for (size_t weekday = 0; weekday < kWeekdays; ++weekday) {
    for (size_t clock = 0; clock < kClockCells; ++clock) {
      visit(weekday, clock, RateCell{weekday, clock, 0}.Index());
    }
  }
}

// How far each kind of factor looks around.
constexpr Bell kAwayBell(0.5);
constexpr Bell kClockWideBell(CellsOfMinutes(100));
constexpr Bell kClockBell(CellsOfMinutes(18));
constexpr Bell kKindWideBell(CellsOfMinutes(90));
constexpr Bell kKindBell(CellsOfMinutes(30));
constexpr Bell kLocalClockBell(CellsOfMinutes(35));
constexpr Bell kLocalAwayBell(0.45, 2);

void SmoothAway(ByAway& numbers) { Smooth(numbers, 1, Ends::Open, kAwayBell); }

void SmoothClock(ByClock& numbers, const Bell& bell) { Smooth(numbers, 1, Ends::Joined, bell); }

void SmoothKind(ByKind& numbers, const Bell& bell) {
  for (size_t kind = 0; kind < kDayKinds; ++kind) {
    Smooth(std::span(numbers).subspan(kind * kClockCells, kClockCells), 1, Ends::Joined, bell);
  }
}

void SmoothLocal(ByLocal& numbers) {
  Smooth(numbers, kAwayClasses, Ends::Joined, kLocalClockBell);
  for (size_t first = 0; first < numbers.size(); first += kAwayClasses) {
    Smooth(std::span(numbers).subspan(first, kAwayClasses), 1, Ends::Open, kLocalAwayBell);
  }
}

// Fits one kind of factor to the returns that were seen and those that all factors together expect,
// both added up as the factor tells them apart. `assumed` returns, as many as are expected, hold it
// near 1 while there is little evidence. `smoothAll` has smoothed what was seen, and smooths what
// is expected. Gives what each number was multiplied by.
template <size_t kCount, typename SmoothAll>
std::array<double, kCount> FitFactor(std::array<double, kCount>& factor, double assumed,
                                     const std::array<double, kCount>& seen,
                                     std::array<double, kCount> expected, SmoothAll smoothAll) {
  for (size_t i = 0; i < kCount; ++i) expected[i] /= factor[i];
  smoothAll(expected);
  std::array<double, kCount> change;
  for (size_t i = 0; i < kCount; ++i) {
    const double fitted = (seen[i] + assumed) / (expected[i] + assumed);
    change[i] = fitted / factor[i];
    factor[i] = fitted;
  }
  return change;
}

ByClock OfBothKinds(const ByKind& numbers) {
  ByClock sums;
  for (size_t i = 0; i < kClockCells; ++i) sums[i] = numbers[i] + numbers[kClockCells + i];
  return sums;
}

// The returns that were seen, smoothed for each kind of factor.
struct SeenReturns {
  explicit SeenReturns(const LearntRates& learnt) {
    ForEachClock([&](size_t weekday, size_t clockCell, size_t first) {
      double ofClock = 0;
      for (size_t i = 0; i < kAwayClasses; ++i) {
        const double count = learnt.returns[first + i];
        ofClock += count;
        away[i] += count;
        local[LocalIndex(clockCell, i)] += count;
      }
      all += ofClock;
      kind[KindIndex(weekday, clockCell)] += ofClock;
      day[weekday] += ofClock;
    });
    clock = OfBothKinds(kind);
    clockWide = clock;
    kindWide = kind;
    SmoothAway(away);
    SmoothClock(clockWide, kClockWideBell);
    SmoothClock(clock, kClockBell);
    SmoothKind(kindWide, kKindWideBell);
    SmoothKind(kind, kKindBell);
    SmoothLocal(local);
  }

  double all = 0;
  ByAway away = {};
  ByClock clockWide;
  ByClock clock;
  ByKind kindWide;
  ByKind kind = {};
  ByWeekday day = {};
  ByLocal local = {};
};

// Fits one kind of factor after the other. What all factors expect in each cell is computed once;
// after that only the sums that the next kind needs are kept up to date, since a pass over all
// cells takes longer than anything else here.
class Round {
 public:
  Round(const LearntRates& learnt, const SeenReturns& seen, RateFactors& factors)
      : learnt_(learnt), seen_(seen), factors_(factors), expected_(kRateCells) {}

  void Fit() {
    const ByAway byAway = FitBase(Expect());
    FitAway(byAway);
    FitTimeOfDay();
    FitDay();
    FitLocal();
  }

 private:
  ByAway Expect() {
    ByLocal awayAndLocal;
    for (size_t i = 0; i < awayAndLocal.size(); ++i) {
      awayAndLocal[i] = factors_.away[i % kAwayClasses] * factors_.local[i];
    }
    ByAway sums = {};
    ForEachClock([&](size_t weekday, size_t clock, size_t first) {
      const size_t kind = KindIndex(weekday, clock);
      const double timeOfWeek = factors_.base * factors_.clockWide[clock] * factors_.clock[clock] *
                                factors_.kindWide[kind] * factors_.kind[kind] *
                                factors_.day[weekday];
      for (size_t i = 0; i < kAwayClasses; ++i) {
        expected_[first + i] =
            learnt_.secondsAway[first + i] * (timeOfWeek * awayAndLocal[LocalIndex(clock, i)]);
        sums[i] += expected_[first + i];
      }
    });
    return sums;
  }

  ByAway FitBase(ByAway expected) {
    double all = 0;
    for (const double count : expected) all += count;
    const double base = (seen_.all + kAssumedReturns) / (all / factors_.base + kAssumedSeconds);
    const double change = base / factors_.base;
    factors_.base = base;
    changeOfAway_.fill(change);
    for (double& count : expected) count *= change;
    return expected;
  }

  void FitAway(const ByAway& expected) {
    const ByAway change = FitFactor(factors_.away, 1.5, seen_.away, expected, SmoothAway);
    for (size_t i = 0; i < kAwayClasses; ++i) changeOfAway_[i] *= change[i];
  }

  void FitTimeOfDay() {
    ForEachClock([&](size_t weekday, size_t clock, size_t first) {
      double sum = 0;
      for (size_t i = 0; i < kAwayClasses; ++i) {
        expected_[first + i] *= changeOfAway_[i];
        sum += expected_[first + i];
      }
      ofClock_[first / kAwayClasses] = sum;
      byKind_[KindIndex(weekday, clock)] += sum;
    });
    changeOfKind_.fill(1);
    FitClock(factors_.clockWide, 1, seen_.clockWide, kClockWideBell);
    FitClock(factors_.clock, 1.5, seen_.clock, kClockBell);
    FitKind(factors_.kindWide, 1, seen_.kindWide, kKindWideBell);
    FitKind(factors_.kind, 2, seen_.kind, kKindBell);
  }

  void FitClock(ByClock& factor, double assumed, const ByClock& seen, const Bell& bell) {
    const ByClock change = FitFactor(factor, assumed, seen, OfBothKinds(byKind_),
                                     [&](ByClock& numbers) { SmoothClock(numbers, bell); });
    for (size_t i = 0; i < byKind_.size(); ++i) Multiply(i, change[i % kClockCells]);
  }

  void FitKind(ByKind& factor, double assumed, const ByKind& seen, const Bell& bell) {
    const ByKind change = FitFactor(factor, assumed, seen, byKind_,
                                    [&](ByKind& numbers) { SmoothKind(numbers, bell); });
    for (size_t i = 0; i < byKind_.size(); ++i) Multiply(i, change[i]);
  }

  void Multiply(size_t kind, double change) {
    byKind_[kind] *= change;
    changeOfKind_[kind] *= change;
  }

  void FitDay() {
    ByWeekday expected = {};
    ForEachClock([&](size_t weekday, size_t clock, size_t first) {
      expected[weekday] +=
          ofClock_[first / kAwayClasses] * changeOfKind_[KindIndex(weekday, clock)];
    });
    changeOfDay_ = FitFactor(factors_.day, 3, seen_.day, expected, [](ByWeekday&) {});
  }

  void FitLocal() {
    ByLocal expected = {};
    ForEachClock([&](size_t weekday, size_t clock, size_t first) {
      const double change = changeOfKind_[KindIndex(weekday, clock)] * changeOfDay_[weekday];
      for (size_t i = 0; i < kAwayClasses; ++i) {
        expected[LocalIndex(clock, i)] += expected_[first + i] * change;
      }
    });
    FitFactor(factors_.local, 1.2, seen_.local, expected, SmoothLocal);
  }

  const LearntRates& learnt_;
  const SeenReturns& seen_;
  RateFactors& factors_;
  std::vector<double> expected_;  // in each cell, as of before FitTimeOfDay's changes
  std::array<double, kWeekdays* kClockCells> ofClock_ = {};  // the same, of all classes
  ByKind byKind_ = {};                                       // up to date
  ByAway changeOfAway_ = {};
  ByKind changeOfKind_ = {};
  ByWeekday changeOfDay_ = {};
};

}  // namespace

RateFactors::RateFactors() : base(kAssumedReturns / kAssumedSeconds) {
  away.fill(1);
  clockWide.fill(1);
  clock.fill(1);
  kindWide.fill(1);
  kind.fill(1);
  day.fill(1);
  local.fill(1);
}

double RateFactors::RateOf(const RateCell& cell) const {
  const size_t kindIndex = KindIndex(cell.weekday, cell.clock);
  return base * away[cell.away] * clockWide[cell.clock] * clock[cell.clock] * kindWide[kindIndex] *
         kind[kindIndex] * day[cell.weekday] * local[LocalIndex(cell.clock, cell.away)];
}

void RateFactors::Fit(const LearntRates& learnt) {
  const SeenReturns seen(learnt);
  for (int round = 0; round < kRoundsOfFit; ++round) Round(learnt, seen, *this).Fit();
}

}  // namespace dozewell
