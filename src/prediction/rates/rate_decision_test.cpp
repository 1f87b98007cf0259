#include "prediction/rates/rate_decision.h"

#include <doctest/doctest.h>

#include <memory>

#include "base/wall_clock.h"
#include "prediction/rates/exponential.h"
#include "prediction/rates/return_forecast.h"
#include "support/sleeps.h"

namespace dozewell {
namespace {

constexpr double kRare = 1e-7;  // returns per second
constexpr double kFrequent = 1e-2;

// Rates of return that are `rate` at hours of the clock from `from` to before `to` and rare
// otherwise.
RateFactors RatesWithReturns(size_t from, size_t to, double rate) {
  RateFactors factors;
  factors.base = kRare;
  for (size_t clock = from * 3; clock < to * 3; ++clock) factors.clock[clock] = rate / kRare;
  return factors;
}

RateWishes Wishes(int32_t weight) { return {weight, 8 * 3600, false, true}; }

}  // namespace

TEST_CASE("a forecast loses in each piece what its rate says") {
  RateFactors factors;
  factors.base = 1e-5;
  const auto pieces = ForecastReturn(factors, kEvening);
  CHECK(pieces[0].start == 0);
  CHECK(pieces[0].seconds == 60);
  CHECK(pieces[0].stillAway == 1);
  CHECK(pieces[0].returning == 1 - Exponential(-60e-5));
  CHECK(pieces[1].stillAway == 1 - pieces[0].returning);
  CHECK(pieces[1].start == 60);
  CHECK(static_cast<double>(pieces.back().start) + pieces.back().seconds == 8 * 86400);
}

TEST_CASE("a forecast ends when a return is all but certain") {
  RateFactors factors;
  factors.base = 1e-3;
  // The probability falls below 0.0001 after 9,211 seconds.
  const auto pieces = ForecastReturn(factors, kEvening);
  CHECK(pieces.back().start == 9000);
  CHECK(pieces.back().stillAway >= 0.0001);
  CHECK(pieces.back().stillAway - pieces.back().returning < 0.0001);
}

TEST_CASE("a machine hibernates as soon as it may when returns are rare") {
  CHECK(DecideByRates(RatesWithReturns(0, 0, 0), Wishes(50), kEvening) ==
        RateDecision{3, std::nullopt});
}

TEST_CASE("a machine of which little is known sleeps for an hour at least") {
  RateWishes wishes = Wishes(50);
  wishes.isBeginner = true;
  CHECK(DecideByRates(RatesWithReturns(0, 0, 0), wishes, kEvening) ==
        RateDecision{60, std::nullopt});
}

TEST_CASE("a machine is woken for the time of likely returns") {
  // Returns from 08:00 on, of which some may stay away until 10:00 when they become rare again.
  CHECK(DecideByRates(RatesWithReturns(8, 10, 1e-4), Wishes(50), kEvening) ==
        RateDecision{3, RateDecision::Second{600, 720}});
}

TEST_CASE("a wake has to gain more than ten minutes asleep") {
  const RateFactors factors = RatesWithReturns(8, 10, 1e-4);
  double returning = 0;
  double asleep = 0;  // seconds, of 08:00 to 10:00
  for (const ForecastPiece& piece : ForecastReturn(factors, kEvening)) {
    if (piece.start < 10 * 3600 || piece.start >= 12 * 3600) continue;
    returning += piece.returning;
    asleep += piece.seconds * (piece.stillAway - piece.returning / 2);
  }
  RateWishes wishes = Wishes(50);
  wishes.meanIdleSeconds = (asleep + 601) / returning;
  CHECK(DecideByRates(factors, wishes, kEvening) ==
        RateDecision{3, RateDecision::Second{600, 720}});
  wishes.meanIdleSeconds = (asleep + 599) / returning;
  CHECK(DecideByRates(factors, wishes, kEvening) == RateDecision{3, std::nullopt});
}

TEST_CASE("a machine that cannot be woken stays hibernated or asleep until then") {
  RateWishes wishes = Wishes(50);
  wishes.canWake = false;
  CHECK(DecideByRates(RatesWithReturns(8, 10, 1e-4), wishes, kEvening) ==
        RateDecision{3, std::nullopt});
  wishes.weight = 80;
  CHECK(DecideByRates(RatesWithReturns(8, 10, 1e-4), wishes, kEvening) ==
        RateDecision{720, std::nullopt});
}

TEST_CASE("a second time asleep that outlasts the forecast lasts for eight days") {
  CHECK(DecideByRates(RatesWithReturns(8, 10, kFrequent), Wishes(50), kEvening) ==
        RateDecision{3, RateDecision::Second{600, kNeverMinutes}});
}

TEST_CASE("never is eight days also where the forecast ends sooner") {
  RateFactors factors;
  factors.base = kFrequent;
  CHECK(DecideByRates(factors, Wishes(50), kEvening) == RateDecision{11520, std::nullopt});
}

TEST_CASE("minutes are rounded up") {
  // Half a minute before 22:00, 08:00 is ten hours and half a minute away.
  CHECK(DecideByRates(RatesWithReturns(8, 10, 1e-4), Wishes(50), kEvening - 30) ==
        RateDecision{3, RateDecision::Second{601, 721}});
}

TEST_CASE("without a wish to save power the machine never hibernates") {
  for (const int32_t weight : {100, 250}) {
    CHECK(DecideByRates(RatesWithReturns(8, 10, 1e-4), Wishes(weight), kEvening) ==
          RateDecision{11520, std::nullopt});
  }
}

TEST_CASE("without a wish for short waits the machine hibernates after three minutes") {
  for (const int32_t weight : {0, -5}) {
    RateWishes wishes = Wishes(weight);
    wishes.isBeginner = true;
    CHECK(DecideByRates(RatesWithReturns(8, 10, 1e-4), wishes, kEvening) ==
          RateDecision{3, std::nullopt});
  }
}

TEST_CASE("the more a wait weighs, the longer the machine is asleep") {
  // Somebody comes back within half an hour or late in the morning.
  RateFactors factors = RatesWithReturns(8, 9, 1e-4);
  factors.away[0] = factors.away[1] = factors.away[2] = 1000;
  int32_t shorter = 0;
  for (const int32_t weight : {5, 50, 95}) {
    const RateDecision decision = DecideByRates(factors, Wishes(weight), kEvening);
    CHECK(decision.hibernate >= shorter);
    shorter = decision.hibernate;
  }
  CHECK(shorter > 3);
}

}  // namespace dozewell
