#ifndef DOZEWELL_PREDICTION_RATES_RETURN_FORECAST_H_
#define DOZEWELL_PREDICTION_RATES_RETURN_FORECAST_H_

#include <cstdint>
#include <vector>

#include "prediction/rates/rate_factors.h"

namespace dozewell {

// A piece of a sleep to come.
struct ForecastPiece {
  int64_t start;     // seconds after the suspend
  double seconds;    // its length
  double stillAway;  // the probability that nobody came back before it
  double returning;  // the probability that somebody comes back in it
};

// When somebody comes back after a suspend at a wall-clock time: the pieces of the sleep, up to
// eight days, or until a return is all but certain.
std::vector<ForecastPiece> ForecastReturn(const RateFactors& factors, int64_t suspend);

}  // namespace dozewell

#endif  // DOZEWELL_PREDICTION_RATES_RETURN_FORECAST_H_
