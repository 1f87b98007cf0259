#include "prediction/rates/rate_decision.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "base/wall_clock.h"

namespace dozewell {
namespace {

constexpr int32_t kShortestSleepMinutes = 3;
constexpr int32_t kBeginnersShortestSleepMinutes = 60;

// What a wake costs, in seconds asleep.
constexpr double kCostOfWake = 600;

// A time at which being asleep begins or ceases to pay.
struct Turn {
  int64_t start;  // seconds after the suspend
  double gain;    // of being asleep until then; a gain of 1 is worth a second asleep
};

// The times among which the best ones are: the first at which the machine may hibernate, all at
// which being asleep begins or ceases to pay after it, and the forecast's end.
class Turns {
 public:
  // `forecast` calls what it is given for each piece of the sleep.
  template <typename Forecast>
  Turns(Forecast forecast, const RateWishes& wishes) {
    const double secondsPerReturn = SecondsPerReturn(wishes);
    const int64_t shortest = kSecondsPerMinute * (wishes.isBeginner ? kBeginnersShortestSleepMinutes
                                                                    : kShortestSleepMinutes);
    double gain = 0;
    double previous = 0;
    size_t count = 0;
    forecast([&](const ForecastPiece& piece) {
      const double more = secondsPerReturn * piece.returning -
                          piece.seconds * (piece.stillAway - piece.returning / 2);
      if (piece.start >= shortest) {
        // Another sign, or none: then the piece is the later one of two that are equal.
        if (more * previous <= 0) turns_[count++] = {piece.start, gain};
        previous = more;
      }
      gain += more;
    });
    count_ = count;
    turns_[count_] = {kLongestSleepSeconds, gain};
  }

  size_t End() const { return count_; }
  double GainOf(size_t turn) const { return turns_[turn].gain; }
  // Rounded up. The end means never, also where the forecast ended sooner.
  int32_t MinutesOf(size_t turn) const {
    return static_cast<int32_t>((turns_[turn].start + kSecondsPerMinute - 1) / kSecondsPerMinute);
  }

 private:
  std::array<Turn, kMostForecastPieces + 1> turns_;
  size_t count_ = 0;
};

// Times asleep end or begin at these turns.
struct TimesAsleep {
  size_t hibernate;
  size_t wake;
  size_t hibernateAgain;
  bool hasSecond;
};

// The best times of all. Among equal ones the earlier, and none rather than a second one.
TimesAsleep BestTimes(const Turns& turns, bool canWake) {
  const size_t end = turns.End();
  TimesAsleep best = {end, end, end, false};
  double bestGain = turns.GainOf(end);
  TimesAsleep later = best;  // the best second time asleep after `hibernate`
  double laterGain = 0;      // what it adds
  size_t bestEnd = end;      // where a second time asleep that begins here ends best
  for (size_t i = end; i-- > 0;) {
    // A second time asleep begins after the first, so it is known before turn `i` can begin one.
    const double gain = turns.GainOf(i) + laterGain;
    if (gain >= bestGain) {
      bestGain = gain;
      best = later;
      best.hibernate = i;
    }
    if (!canWake) continue;
    if (turns.GainOf(i) >= turns.GainOf(bestEnd)) bestEnd = i;
    const double secondGain = turns.GainOf(bestEnd) - turns.GainOf(i) - kCostOfWake;
    if (secondGain > 0 && secondGain >= laterGain) {
      laterGain = secondGain;
      later = {end, i, bestEnd, true};
    }
  }
  return best;
}

template <typename Forecast>
RateDecision Decide(Forecast forecast, const RateWishes& wishes) {
  if (wishes.weight <= 0) return {kShortestSleepMinutes, std::nullopt};
  if (wishes.weight >= 100) return {kNeverMinutes, std::nullopt};
  const Turns turns(forecast, wishes);
  const TimesAsleep best = BestTimes(turns, wishes.canWake);
  RateDecision decision = {turns.MinutesOf(best.hibernate), std::nullopt};
  if (best.hasSecond) {
    const int32_t wake = turns.MinutesOf(best.wake);
    // Pieces of less than a minute may round to the same one, and a timeout of 0 would be none.
    decision.second = {wake, std::max(turns.MinutesOf(best.hibernateAgain), wake + 1)};
  }
  return decision;
}

}  // namespace

RateWishes WishesOf(const LearntRates& learnt, int32_t weight, bool canWake) {
  constexpr int64_t kFewestSleeps = 3;
  return {weight, learnt.MeanIdleSeconds(), learnt.sleeps < kFewestSleeps, canWake};
}

double SecondsPerReturn(const RateWishes& wishes) {
  const double weight = wishes.weight;
  return weight / (100 - weight) * wishes.meanIdleSeconds;
}

RateDecision DecideByRates(const ReturnRates& rates, const RateWishes& wishes, int64_t suspend) {
  return Decide([&](auto visit) { ForecastReturn(rates, suspend, visit); }, wishes);
}

RateDecision DecideByForecast(std::span<const ForecastPiece> forecast, const RateWishes& wishes) {
  return Decide([&](auto visit) { std::ranges::for_each(forecast, visit); }, wishes);
}

}  // namespace dozewell
