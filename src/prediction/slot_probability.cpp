#include "prediction/slot_probability.h"

#include "base/numbers.h"
#include "prediction/tracker.h"

namespace dozewell {

ObservationWeights NormalisedWeights(int32_t firstLast, int32_t secondLast, int32_t agregation) {
  const auto sum = static_cast<float>(Wrap32(int64_t{firstLast} + secondLast + agregation));
  return {static_cast<float>(firstLast) / sum, static_cast<float>(secondLast) / sum,
          static_cast<float>(agregation) / sum};
}

float EstimateProbability(const Observations& observations, const ObservationWeights& weights) {
  if (observations.last == kNone) return kUnknownProbability;
  const auto last = static_cast<float>(observations.last);
  if (observations.secondLast == kNone) return last;
  const auto secondLast = static_cast<float>(observations.secondLast);
  const float recent = last * weights.firstLast + secondLast * weights.secondLast;
  if (observations.sum == kNone) return recent / (weights.firstLast + weights.secondLast);
  const auto sum = static_cast<float>(observations.sum);
  const auto count = static_cast<float>(observations.count);
  return recent + (sum / count) * weights.agregation;
}

Observations ObservationsOf(const SlotRecord& slot) {
  return {slot.count, slot.sum, slot.secondLast, slot.last};
}

}  // namespace dozewell
