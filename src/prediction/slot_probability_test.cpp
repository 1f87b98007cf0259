#include "prediction/slot_probability.h"

#include <doctest/doctest.h>

#include <vector>

#include "prediction/tracker.h"

namespace dozewell {

TEST_CASE("an estimate uses as much as is known") {
  constexpr ObservationWeights kWeights = {0.5F, 0.25F, 0.25F};
  CHECK(EstimateProbability({4, 2, 1, kNone}, kWeights) == kUnknownProbability);
  CHECK(EstimateProbability({4, 2, kNone, 1}, kWeights) == 1.0F);
  CHECK(EstimateProbability({4, kNone, 1, 0}, kWeights) == 0.25F / 0.75F);
  CHECK(EstimateProbability({4, 2, 1, 0}, kWeights) == 0.375F);
}

TEST_CASE("estimates are in 32-bit floats, added from left to right") {
  const ObservationWeights weights = {static_cast<float>(20) / 100.0F,
                                      static_cast<float>(20) / 100.0F,
                                      static_cast<float>(60) / 100.0F};
  CHECK(EstimateProbability({3, 1, 1, 1}, weights) ==
        (weights.firstLast + weights.secondLast) + (1.0F / 3.0F) * weights.agregation);
}

TEST_CASE("bits of the grouping beyond the week and its sign do not matter") {
  std::vector<SlotRecord> slots(7, SlotRecord{kNone, kNone, kNone, kNone, kNone});
  slots[2].last = 1;
  for (const int32_t grouping : {12, 12 + 128, 12 - 128}) {
    const auto pooled = DayGroups(grouping).Pool(slots.data(), 1, 0);
    CHECK(pooled[3].last == 1);
    CHECK(pooled[4].last == kNone);
  }
}

}  // namespace dozewell
