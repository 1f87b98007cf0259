#include "prediction/rates/rate_factors.h"

#include <doctest/doctest.h>

#include "base/wall_clock.h"
#include "support/sleeps.h"

namespace dozewell {
namespace {

// A hundred nights from 22:00 to 07:30 with one hour away at noon on working days.
LearntRates Nights() {
  LearntRates learnt;
  for (int day = 0; day < 100; ++day) {
    const int64_t morning = SecondsFromTm(LocalTime(2026, 1, 5)) + day * 24 * kHour;
    learnt.Learn(morning - 2 * kHour, morning + 7 * kHour + 1800);
    if (day % 7 < 5) learnt.Learn(morning + 12 * kHour, morning + 13 * kHour);
  }
  return learnt;
}

}  // namespace

TEST_CASE("before anything is fitted somebody comes back twice in sixteen hours") {
  CHECK(RateFactors().RateOf({3, 40, 5}) == 2.0 / (16 * kHour));
}

TEST_CASE("a rate is the product of all factors of its cell") {
  RateFactors factors;
  factors.base = 2;
  factors.away[5] = 3;
  factors.clockWide[40] = 5;
  factors.clock[40] = 7;
  factors.kindWide[kClockCells + 40] = 11;
  factors.kind[kClockCells + 40] = 13;
  factors.day[6] = 17;
  factors.local[40 * kAwayClasses + 5] = 19;
  CHECK(factors.RateOf({6, 40, 5}) == 2.0 * 3 * 5 * 7 * 11 * 13 * 17 * 19);
  CHECK(factors.RateOf({1, 40, 5}) == 2.0 * 3 * 5 * 7 * 19);
  CHECK(factors.RateOf({6, 41, 5}) == 2.0 * 3 * 17);
  CHECK(factors.RateOf({0, 40, 4}) == 2.0 * 5 * 7 * 11 * 13);
}

TEST_CASE("Saturday and Sunday are days of the other kind") {
  CHECK(DayKindOf(0) == 1);
  for (size_t weekday = 1; weekday <= 5; ++weekday) CHECK(DayKindOf(weekday) == 0);
  CHECK(DayKindOf(6) == 1);
}

TEST_CASE("a fit without evidence changes nothing") {
  RateFactors factors;
  factors.Fit(LearntRates());
  CHECK(factors == RateFactors());
}

TEST_CASE("a return raises what it is evidence for, and its neighbours by their distance") {
  // One hour in one cell, with one return.
  LearntRates learnt;
  learnt.secondsAway[RateCell{2, 30, 4}.Index()] = 3600;
  learnt.returns[RateCell{2, 30, 4}.Index()] = 1;
  RateFactors factors;
  factors.Fit(learnt);

  // The same by hand: only one cell has evidence, so each factor's expected returns are one number,
  // which spreads like the return.
  double base = 1;
  double f[7] = {1, 1, 1, 1, 1, 1, 1};
  const double assumed[7] = {1.5, 1, 1.5, 1, 2, 3, 1.2};
  const auto product = [&] {
    double all = base;
    for (const double factor : f) all *= factor;
    return all;
  };
  double expectedOfLocal = 0;
  for (int round = 0; round < 2; ++round) {
    base = (1 + 2.0) / (3600 * product() / base + 2 * 8 * kHour);
    for (size_t i = 0; i < 7; ++i) {
      const double expected = 3600 * product() / f[i];
      f[i] = (1 + assumed[i]) / (expected + assumed[i]);
      expectedOfLocal = expected;
    }
  }
  CHECK(factors.base == doctest::Approx(base).epsilon(1e-12));
  CHECK(factors.away[4] == doctest::Approx(f[0]).epsilon(1e-12));
  CHECK(factors.clockWide[30] == doctest::Approx(f[1]).epsilon(1e-12));
  CHECK(factors.clock[30] == doctest::Approx(f[2]).epsilon(1e-12));
  CHECK(factors.kindWide[30] == doctest::Approx(f[3]).epsilon(1e-12));
  CHECK(factors.kind[30] == doctest::Approx(f[4]).epsilon(1e-12));
  CHECK(factors.day[2] == doctest::Approx(f[5]).epsilon(1e-12));
  CHECK(factors.local[30 * kAwayClasses + 4] == doctest::Approx(f[6]).epsilon(1e-12));

  const double weight = BellAt(5, 1.75) * BellAt(2, 0.45);
  CHECK(factors.local[35 * kAwayClasses + 6] ==
        doctest::Approx((weight + 1.2) / (weight * expectedOfLocal + 1.2)).epsilon(1e-12));
  CHECK(factors.local[36 * kAwayClasses + 4] == 1);
  CHECK(factors.local[30 * kAwayClasses + 7] == 1);
  CHECK(factors.away[5] > 1);
  CHECK(factors.away[6] == 1);
  CHECK(factors.clockWide[45] > 1);
  CHECK(factors.clockWide[46] == 1);
  CHECK(factors.clock[32] > 1);
  CHECK(factors.clock[33] == 1);
  CHECK(factors.kindWide[43] > 1);
  CHECK(factors.kindWide[44] == 1);
  CHECK(factors.kindWide[kClockCells + 30] == 1);
  CHECK(factors.kind[34] > 1);
  CHECK(factors.kind[35] == 1);
  CHECK(factors.day[1] == 1);
}

TEST_CASE("the clock is a ring") {
  LearntRates learnt;
  learnt.secondsAway[RateCell{2, 71, 4}.Index()] = 3600;
  learnt.returns[RateCell{2, 71, 4}.Index()] = 1;
  RateFactors factors;
  factors.Fit(learnt);
  CHECK(factors.clock[0] == factors.clock[70]);
  CHECK(factors.clock[0] > 1);
  CHECK(factors.kind[0] == factors.kind[70]);
  CHECK(factors.kind[kClockCells] == 1);
  CHECK(factors.local[4] == factors.local[70 * kAwayClasses + 4]);
}

TEST_CASE("a fit starts from what the factors are") {
  const LearntRates learnt = Nights();
  RateFactors once;
  once.Fit(learnt);
  RateFactors twice = once;
  twice.Fit(learnt);
  CHECK_FALSE(twice == once);
}

TEST_CASE("returns are likely when they were seen and unlikely when they were not") {
  const LearntRates learnt = Nights();
  RateFactors factors;
  factors.Fit(learnt);
  // Returns per hour on a Wednesday: at 07:20 after nine hours, at 03:00, at 12:50 after fifty
  // minutes.
  CHECK(factors.RateOf({3, 22, 6}) * kHour > 1);
  CHECK(factors.RateOf({3, 9, 5}) * kHour < 0.01);
  CHECK(factors.RateOf({3, 38, 3}) * kHour > 1);
}

}  // namespace dozewell
