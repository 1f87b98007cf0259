#include "prediction/rates/rate_decision.h"

#include <algorithm>
#include <cstddef>

namespace dozewell {
namespace {

constexpr int32_t kShortestSleepMinutes = 3;
constexpr int32_t kBeginnersShortestSleepMinutes = 60;

// What a wake costs, in seconds asleep.
constexpr double kCostOfWake = 600;

// Times asleep in a forecast, by the pieces at whose start they end or begin. The number of pieces
// stands for the end of the forecast.
struct TimesAsleep {
  size_t hibernate;
  size_t wake;
  size_t hibernateAgain;
  bool hasSecond;
};

// What is gained by being asleep from the suspend until a piece, for each piece and the end. A gain
// of 1 is worth a second asleep.
std::vector<double> Gains(const std::vector<ForecastPiece>& pieces, const RateWishes& wishes) {
  const double weight = wishes.weight;
  const double secondsPerReturn = weight / (100 - weight) * wishes.meanIdleSeconds;
  std::vector<double> gains;
  gains.reserve(pieces.size() + 1);
  double gain = 0;
  gains.push_back(gain);
  for (const ForecastPiece& piece : pieces) {
    gain += secondsPerReturn * piece.returning -
            piece.seconds * (piece.stillAway - piece.returning / 2);
    gains.push_back(gain);
  }
  return gains;
}

// The best times of all. Among equal ones the earlier, and none rather than a second one.
TimesAsleep BestTimes(const std::vector<double>& gains, size_t firstAllowed, bool canWake) {
  const size_t end = gains.size() - 1;
  TimesAsleep best = {end, end, end, false};
  double bestGain = gains[end];
  TimesAsleep later = best;  // the best second time asleep after `hibernate`
  double laterGain = 0;      // what it adds
  size_t bestEnd = end;      // where a second time asleep that begins here ends best
  for (size_t i = end; i-- > firstAllowed;) {
    // A second time asleep begins after the first, so it is known before piece `i` can begin one.
    const double gain = gains[i] + laterGain;
    if (gain >= bestGain) {
      bestGain = gain;
      best = later;
      best.hibernate = i;
    }
    if (!canWake) continue;
    if (gains[i] >= gains[bestEnd]) bestEnd = i;
    const double secondGain = gains[bestEnd] - gains[i] - kCostOfWake;
    if (secondGain > 0 && secondGain >= laterGain) {
      laterGain = secondGain;
      later = {end, i, bestEnd, true};
    }
  }
  return best;
}

int32_t MinutesOf(const std::vector<ForecastPiece>& pieces, size_t piece) {
  constexpr int64_t kMinute = 60;
  if (piece == pieces.size()) return kNeverMinutes;
  return static_cast<int32_t>((pieces[piece].start + kMinute - 1) / kMinute);
}

}  // namespace

RateWishes WishesOf(const LearntRates& learnt, int32_t weight, bool canWake) {
  constexpr int64_t kFewestSleeps = 3;
  return {weight, learnt.MeanIdleSeconds(), learnt.sleeps < kFewestSleeps, canWake};
}

RateDecision DecideByRates(const RateFactors& factors, const RateWishes& wishes, int64_t suspend) {
  return DecideByForecast(ForecastReturn(factors, suspend), wishes);
}

RateDecision DecideByForecast(const std::vector<ForecastPiece>& pieces, const RateWishes& wishes) {
  if (wishes.weight <= 0) return {kShortestSleepMinutes, std::nullopt};
  if (wishes.weight >= 100) return {kNeverMinutes, std::nullopt};
  const int32_t shortest =
      wishes.isBeginner ? kBeginnersShortestSleepMinutes : kShortestSleepMinutes;
  size_t firstAllowed = 0;
  while (firstAllowed < pieces.size() && pieces[firstAllowed].start < int64_t{shortest} * 60) {
    ++firstAllowed;
  }
  const TimesAsleep best = BestTimes(Gains(pieces, wishes), firstAllowed, wishes.canWake);
  RateDecision decision = {MinutesOf(pieces, best.hibernate), std::nullopt};
  if (best.hasSecond) {
    const int32_t wake = MinutesOf(pieces, best.wake);
    // Pieces of less than a minute may round to the same one, and a timeout of 0 would be none.
    decision.second = {wake, std::max(MinutesOf(pieces, best.hibernateAgain), wake + 1)};
  }
  return decision;
}

}  // namespace dozewell
