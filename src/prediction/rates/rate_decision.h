#ifndef DOZEWELL_PREDICTION_RATES_RATE_DECISION_H_
#define DOZEWELL_PREDICTION_RATES_RATE_DECISION_H_

#include <cstdint>
#include <optional>
#include <span>

#include "prediction/rates/learnt_rates.h"
#include "prediction/rates/return_forecast.h"

namespace dozewell {

// How long a machine sleeps that never hibernates, in minutes: as far as sleeps are looked at.
inline constexpr int32_t kNeverMinutes = kLongestSleepSeconds / 60;

// What decides besides the forecast.
struct RateWishes {
  int32_t weight;          // of not waiting for a resume, of 100; the rest is for saving power
  double meanIdleSeconds;  // the length of a sleep to expect
  bool isBeginner;         // too little is learnt to hibernate soon
  bool canWake;            // the machine can be woken from hibernation
};

// The wishes of a machine that has learnt this.
RateWishes WishesOf(const LearntRates& learnt, int32_t weight, bool canWake);

// How many seconds asleep a wait weighs as much as, for weights between 0 and 100.
double SecondsPerReturn(const RateWishes& wishes);

// Minutes from the suspend on.
struct RateDecision {
  // A second time asleep, from `wake` on until `hibernate`.
  struct Second {
    int32_t wake;
    int32_t hibernate;

    bool operator==(const Second&) const = default;
  };

  int32_t hibernate;
  std::optional<Second> second;

  bool operator==(const RateDecision&) const = default;
};

// When a machine that is suspended at a wall-clock time should hibernate, so that time asleep is
// spent where somebody is likely to come back.
RateDecision DecideByRates(const ReturnRates& rates, const RateWishes& wishes, int64_t suspend);

// The same for a suspend whose forecast has these pieces.
RateDecision DecideByForecast(std::span<const ForecastPiece> forecast, const RateWishes& wishes);

}  // namespace dozewell

#endif  // DOZEWELL_PREDICTION_RATES_RATE_DECISION_H_
