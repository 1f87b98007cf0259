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

constexpr size_t KindIndex(const RateCell& cell) {
  return DayKindOf(cell.weekday) * kClockCells + cell.clock;
}
constexpr size_t LocalIndex(const RateCell& cell) { return cell.clock * kAwayClasses + cell.away; }

constexpr double CellsOfMinutes(double minutes) { return minutes * 60 / kSecondsPerClockCell; }

void SmoothAway(std::span<double> numbers, const Bell& bell) {
  for (size_t first = 0; first < numbers.size(); first += kAwayClasses) {
    Smooth(numbers, {first, kAwayClasses, 1, /*isRing=*/false}, bell);
  }
}

// Smooths along the clock what has a number, or one for each class, in each clock cell of each
// kind.
void SmoothClock(std::span<double> numbers, size_t step, const Bell& bell) {
  const size_t dayLength = kClockCells * step;
  for (size_t day = 0; day < numbers.size(); day += dayLength) {
    for (size_t offset = 0; offset < step; ++offset) {
      Smooth(numbers, {day + offset, kClockCells, step, /*isRing=*/true}, bell);
    }
  }
}

void NotSmoothed(std::span<double>) {}

// The returns to expect in each cell by factors of which one after the other is fitted.
class ExpectedReturns {
 public:
  ExpectedReturns(const LearntRates& learnt, RateFactors& factors)
      : learnt_(learnt), factors_(factors), expected_(kRateCells) {
    ForEachCell([&](const RateCell& cell) {
      expected_[cell.Index()] = learnt_.secondsAway[cell.Index()] * factors_.RateOf(cell);
    });
  }

  void FitBase() {
    double seen = 0;
    double expected = 0;
    for (const float count : learnt_.returns) seen += count;
    for (const double count : expected_) expected += count;
    const double base = (seen + kAssumedReturns) / (expected / factors_.base + kAssumedSeconds);
    for (double& count : expected_) count *= base / factors_.base;
    factors_.base = base;
  }

  // Fits one kind of factor, of which `indexOf` a cell applies there. `assumed` returns, as many as
  // are expected, hold it near 1 while there is little evidence.
  template <size_t kCount, typename IndexOf, typename SmoothAll>
  void Fit(std::array<double, kCount>& factor, double assumed, IndexOf indexOf,
           SmoothAll smoothAll) {
    std::array<double, kCount> seen = {};
    std::array<double, kCount> expected = {};
    ForEachCell([&](const RateCell& cell) {
      seen[indexOf(cell)] += learnt_.returns[cell.Index()];
      expected[indexOf(cell)] += expected_[cell.Index()];
    });
    for (size_t i = 0; i < kCount; ++i) expected[i] /= factor[i];
    smoothAll(seen);
    smoothAll(expected);
    std::array<double, kCount> change = {};
    for (size_t i = 0; i < kCount; ++i) {
      const double fitted = (seen[i] + assumed) / (expected[i] + assumed);
      change[i] = fitted / factor[i];
      factor[i] = fitted;
    }
    ForEachCell([&](const RateCell& cell) { expected_[cell.Index()] *= change[indexOf(cell)]; });
  }

 private:
  const LearntRates& learnt_;
  RateFactors& factors_;
  std::vector<double> expected_;
};

void FitOnce(const LearntRates& learnt, RateFactors& factors) {
  const auto awayOf = [](const RateCell& cell) { return cell.away; };
  const auto clockOf = [](const RateCell& cell) { return cell.clock; };
  const auto weekdayOf = [](const RateCell& cell) { return cell.weekday; };
  const auto smoothAway = [](std::span<double> numbers) { SmoothAway(numbers, BellOf(0.5)); };
  const auto smoothClock = [](double minutes) {
    return [bell = BellOf(CellsOfMinutes(minutes))](std::span<double> numbers) {
      SmoothClock(numbers, 1, bell);
    };
  };
  const auto smoothLocal = [](std::span<double> numbers) {
    SmoothClock(numbers, kAwayClasses, BellOf(CellsOfMinutes(35)));
    SmoothAway(numbers, {0.45, 2});
  };

  ExpectedReturns expected(learnt, factors);
  expected.FitBase();
  expected.Fit(factors.away, 1.5, awayOf, smoothAway);
  expected.Fit(factors.clockWide, 1, clockOf, smoothClock(100));
  expected.Fit(factors.clock, 1.5, clockOf, smoothClock(18));
  expected.Fit(factors.kindWide, 1, KindIndex, smoothClock(90));
  expected.Fit(factors.kind, 2, KindIndex, smoothClock(30));
  expected.Fit(factors.day, 3, weekdayOf, NotSmoothed);
  expected.Fit(factors.local, 1.2, LocalIndex, smoothLocal);
}

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
  return base * away[cell.away] * clockWide[cell.clock] * clock[cell.clock] *
         kindWide[KindIndex(cell)] * kind[KindIndex(cell)] * day[cell.weekday] *
         local[LocalIndex(cell)];
}

void RateFactors::Fit(const LearntRates& learnt) {
  for (int round = 0; round < kRoundsOfFit; ++round) FitOnce(learnt, *this);
}

}  // namespace dozewell
