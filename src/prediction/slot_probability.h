#ifndef DOZEWELL_PREDICTION_SLOT_PROBABILITY_H_
#define DOZEWELL_PREDICTION_SLOT_PROBABILITY_H_

#include <cstdint>

#include "prediction/tracker_data.h"

namespace dozewell {

// What a slot's probability is estimated from: the slot's own observations, or those of the same
// time of day on every day of its group.
struct Observations {
  int32_t count;
  int32_t sum;
  int32_t secondLast;
  int32_t last;

  bool operator==(const Observations&) const = default;
};

// The shares of the last, the second-last and the older observations; they sum to 1.
struct ObservationWeights {
  float firstLast = 0.0F;
  float secondLast = 0.0F;
  float agregation = 0.0F;
};

// The shares of three configured weights in their sum, which wraps at 32 bits and may be 0.
ObservationWeights NormalisedWeights(int32_t firstLast, int32_t secondLast, int32_t agregation);

// The threshold that a strength in per cent stands for.
constexpr float ThresholdOf(int32_t percent) { return static_cast<float>(percent) / 100.0F; }

// The probability that these observations give, or kUnknownProbability without any. Everything is
// computed in 32-bit floats; a division by zero follows IEEE 754.
float EstimateProbability(const Observations& observations, const ObservationWeights& weights);

Observations ObservationsOf(const SlotRecord& slot);

}  // namespace dozewell

#endif  // DOZEWELL_PREDICTION_SLOT_PROBABILITY_H_
