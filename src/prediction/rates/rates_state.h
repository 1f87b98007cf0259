#ifndef DOZEWELL_PREDICTION_RATES_RATES_STATE_H_
#define DOZEWELL_PREDICTION_RATES_RATES_STATE_H_

#include <cstdint>

#include "prediction/rates/learnt_rates.h"
#include "prediction/rates/rate_factors.h"

namespace dozewell {

// All that the rate predictor knows. Part of a file, byte for byte.
struct RatesState {
  static constexpr int64_t kNone = -1;

  LearntRates learnt;
  RateFactors factors;
  int64_t suspend = kNone;  // wall-clock seconds at which the machine was left, unless it is in use
  int64_t newest = kNone;   // the latest time of all events, in wall-clock seconds

  // Takes one change of state of the time line, at wall-clock seconds. The first of several
  // suspends begins a sleep and the first of several activations ends it, which is when it is
  // learnt. ContainerStopped only counts as a time; an invalid time changes nothing. True when the
  // factors were fitted.
  bool Take(int32_t state, int64_t time);

  bool operator==(const RatesState&) const = default;
};

}  // namespace dozewell

#endif  // DOZEWELL_PREDICTION_RATES_RATES_STATE_H_
