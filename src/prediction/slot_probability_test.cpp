#include "prediction/slot_probability.h"

#include <doctest/doctest.h>

#include <limits>

#include "prediction/tracker.h"

namespace dozewell {

TEST_CASE("an estimate uses as much as is known") {
  constexpr ObservationWeights kWeights = {0.5F, 0.25F, 0.25F};
  CHECK(EstimateProbability({4, 2, 1, kNone}, kWeights) == kUnknownProbability);
  CHECK(EstimateProbability({4, 2, kNone, 1}, kWeights) == 1.0F);
  CHECK(EstimateProbability({4, kNone, 1, 0}, kWeights) == 0.25F / 0.75F);
  CHECK(EstimateProbability({4, 2, 1, 0}, kWeights) == 0.375F);
}

TEST_CASE("weights are shares of their sum, which wraps at 32 bits") {
  const ObservationWeights shares = NormalisedWeights(2, 1, 1);
  CHECK(shares.firstLast == 0.5F);
  CHECK(shares.secondLast == 0.25F);
  CHECK(shares.agregation == 0.25F);
  constexpr int32_t kMost = std::numeric_limits<int32_t>::max();
  CHECK(NormalisedWeights(kMost, kMost, 0).firstLast == -1073741824.0F);  // of a sum of -2
}

TEST_CASE("a strength of 70 per cent is a threshold of 0.7") {
  CHECK(ThresholdOf(70) == 0.7F);
  CHECK(ThresholdOf(-10) == -0.1F);
}

TEST_CASE("estimates are in 32-bit floats, added from left to right") {
  // In another order, or with more precision before the end, it would be 0x1.99999Ap-1.
  CHECK(EstimateProbability({3, 2, 1, 1}, NormalisedWeights(20, 20, 60)) == 0x1.99999Cp-1F);
}

}  // namespace dozewell
