#include "prediction/rates/rate_decision.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <random>
#include <vector>

#include "base/wall_clock.h"
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

// The decision, which a forecast that was made before gives too.
RateDecision Decide(const RateFactors& factors, const RateWishes& wishes, int64_t suspend) {
  const ReturnRates rates(factors);
  std::vector<ForecastPiece> forecast;
  ForecastReturn(rates, suspend, [&](const ForecastPiece& piece) { forecast.push_back(piece); });
  const RateDecision decision = DecideByRates(rates, wishes, suspend);
  CHECK(DecideByForecast(forecast, wishes) == decision);
  return decision;
}

// The decision that gains most of all that there are, one time after the other.
RateDecision BestOfAllTimes(const RateFactors& factors, const RateWishes& wishes, int64_t suspend) {
  const double secondsPerReturn =
      static_cast<double>(wishes.weight) / (100 - wishes.weight) * wishes.meanIdleSeconds;
  std::vector<double> gains = {0};
  std::vector<int32_t> minutes;
  size_t first = 0;
  ForecastReturn(ReturnRates(factors), suspend, [&](const ForecastPiece& piece) {
    if (piece.start < (wishes.isBeginner ? 3600 : 180)) ++first;
    minutes.push_back(static_cast<int32_t>((piece.start + 59) / 60));
    gains.push_back(gains.back() + secondsPerReturn * piece.returning -
                    piece.seconds * (piece.stillAway - piece.returning / 2));
  });
  minutes.push_back(kNeverMinutes);
  double most = -HUGE_VAL;
  RateDecision best = {};
  for (size_t hibernate = first; hibernate < gains.size(); ++hibernate) {
    if (gains[hibernate] > most) {
      most = gains[hibernate];
      best = {minutes[hibernate], std::nullopt};
    }
    for (size_t wake = hibernate + 1; wishes.canWake && wake < gains.size(); ++wake) {
      for (size_t end = wake + 1; end < gains.size(); ++end) {
        const double gain = gains[hibernate] + (gains[end] - gains[wake] - 600);
        if (gain <= most) continue;
        most = gain;
        best = {minutes[hibernate], RateDecision::Second{minutes[wake], minutes[end]}};
      }
    }
  }
  return best;
}

}  // namespace

TEST_CASE("a machine hibernates as soon as it may when returns are rare") {
  CHECK(Decide(RatesWithReturns(0, 0, 0), Wishes(50), kEvening) == RateDecision{3, std::nullopt});
}

TEST_CASE("a machine of which little is known sleeps for an hour at least") {
  RateWishes wishes = Wishes(50);
  wishes.isBeginner = true;
  CHECK(Decide(RatesWithReturns(0, 0, 0), wishes, kEvening) == RateDecision{60, std::nullopt});
}

TEST_CASE("a machine is woken for the time of likely returns") {
  // Returns from 08:00 on, of which some may stay away until 10:00 when they become rare again.
  CHECK(Decide(RatesWithReturns(8, 10, 1e-4), Wishes(50), kEvening) ==
        RateDecision{3, RateDecision::Second{600, 720}});
}

TEST_CASE("a wake has to gain more than ten minutes asleep") {
  const RateFactors factors = RatesWithReturns(8, 10, 1e-4);
  double returning = 0;
  double asleep = 0;  // seconds, of 08:00 to 10:00
  ForecastReturn(ReturnRates(factors), kEvening, [&](const ForecastPiece& piece) {
    if (piece.start < 10 * 3600 || piece.start >= 12 * 3600) return;
    returning += piece.returning;
    asleep += piece.seconds * (piece.stillAway - piece.returning / 2);
  });
  RateWishes wishes = Wishes(50);
  wishes.meanIdleSeconds = (asleep + 601) / returning;
  CHECK(Decide(factors, wishes, kEvening) == RateDecision{3, RateDecision::Second{600, 720}});
  wishes.meanIdleSeconds = (asleep + 599) / returning;
  CHECK(Decide(factors, wishes, kEvening) == RateDecision{3, std::nullopt});
}

TEST_CASE("no other times are better than those that are chosen") {
  std::mt19937 random(7);
  const auto below = [&random](uint32_t limit) { return static_cast<int32_t>(random() % limit); };
  int wakes = 0;
  for (int round = 0; round < 100; ++round) {
    // Hours in which returns are rare, hours in which they are not, and one that ends the forecast.
    RateFactors factors = RatesWithReturns(0, 0, 0);
    constexpr double kFactors[] = {1, 1, 1, 100, 300, 1000};
    for (size_t hour = 0; hour < 24; ++hour) {
      const double factor = hour == 9 ? kFrequent / kRare : kFactors[below(6)];
      std::fill_n(factors.clock.begin() + hour * 3, 3, factor);
    }
    const RateWishes wishes = {1 + below(99), 600.0 + below(40000), below(4) == 0, below(4) != 0};
    const int64_t suspend = kEvening + below(700000);
    const RateDecision best = BestOfAllTimes(factors, wishes, suspend);
    CHECK(Decide(factors, wishes, suspend) == best);
    wakes += best.second ? 1 : 0;
  }
  CHECK(wakes > 20);
}

TEST_CASE("a machine that cannot be woken stays hibernated or asleep until then") {
  RateWishes wishes = Wishes(50);
  wishes.canWake = false;
  CHECK(Decide(RatesWithReturns(8, 10, 1e-4), wishes, kEvening) == RateDecision{3, std::nullopt});
  wishes.weight = 80;
  CHECK(Decide(RatesWithReturns(8, 10, 1e-4), wishes, kEvening) == RateDecision{720, std::nullopt});
}

TEST_CASE("a second time asleep that outlasts the forecast lasts for eight days") {
  CHECK(Decide(RatesWithReturns(8, 10, kFrequent), Wishes(50), kEvening) ==
        RateDecision{3, RateDecision::Second{600, kNeverMinutes}});
}

TEST_CASE("never is eight days also where the forecast ends sooner") {
  RateFactors factors;
  factors.base = kFrequent;
  CHECK(Decide(factors, Wishes(50), kEvening) == RateDecision{11520, std::nullopt});
}

TEST_CASE("minutes are rounded up") {
  // Half a minute before 22:00, 08:00 is ten hours and half a minute away.
  CHECK(Decide(RatesWithReturns(8, 10, 1e-4), Wishes(50), kEvening - 30) ==
        RateDecision{3, RateDecision::Second{601, 721}});
}

TEST_CASE("without a wish to save power the machine never hibernates") {
  for (const int32_t weight : {100, 250}) {
    CHECK(Decide(RatesWithReturns(8, 10, 1e-4), Wishes(weight), kEvening) ==
          RateDecision{11520, std::nullopt});
  }
}

TEST_CASE("without a wish for short waits the machine hibernates after three minutes") {
  for (const int32_t weight : {0, -5}) {
    RateWishes wishes = Wishes(weight);
    wishes.isBeginner = true;
    CHECK(Decide(RatesWithReturns(8, 10, 1e-4), wishes, kEvening) == RateDecision{3, std::nullopt});
  }
}

TEST_CASE("the more a wait weighs, the longer the machine is asleep") {
  // Somebody comes back within half an hour or late in the morning.
  RateFactors factors = RatesWithReturns(8, 9, 1e-4);
  factors.away[0] = factors.away[1] = factors.away[2] = 1000;
  int32_t shorter = 0;
  for (const int32_t weight : {5, 50, 95}) {
    const RateDecision decision = Decide(factors, Wishes(weight), kEvening);
    CHECK(decision.hibernate >= shorter);
    shorter = decision.hibernate;
  }
  CHECK(shorter > 3);
}

}  // namespace dozewell
