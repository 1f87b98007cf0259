#include "optimizer/grid/pooling_key.h"

#include <doctest/doctest.h>

#include <vector>

#include "optimizer/grid/simulated_cycle.h"
#include "prediction/slot_pool.h"
#include "support/random_slots.h"

namespace dozewell {

TEST_CASE("day groupings of one key pool the same days, and others do not") {
  CHECK(PoolingKeyOf(0) == PoolingKeyOf(127));
  CHECK(PoolingKeyOf(12) == PoolingKeyOf(115));
  CHECK(PoolingKeyOf(12) == PoolingKeyOf(12 + 128));
  CHECK(PoolingKeyOf(255) == PoolingKeyOf(128));
  CHECK(PoolingKeyOf(-1) == PoolingKeyOf(255));
  RandomHistories random(4);
  const std::vector<SlotRecord> slots = RandomSlots(random, kSimulatedSlots);
  const auto poolAll = [&slots](int32_t grouping) {
    const SlotPool pool(DayGroups(grouping), kSimulatedSlotsPerDay);
    std::vector<Observations> all;
    all.reserve(kSimulatedSlots);
    for (int slot = 0; slot < kSimulatedSlots; ++slot) {
      all.push_back(pool.At(slots.data() + slot, slot / kSimulatedSlotsPerDay));
    }
    return all;
  };
  std::vector<std::vector<Observations>> pools;
  pools.reserve(256);
  for (int32_t grouping = 0; grouping <= 255; ++grouping) pools.push_back(poolAll(grouping));
  int wrong = 0;
  for (int32_t a = 0; a <= 255; ++a) {
    const int32_t key = PoolingKeyOf(a);
    REQUIRE(key >= 0);
    REQUIRE(key <= 255);
    if (pools[static_cast<size_t>(a)] != pools[static_cast<size_t>(key)]) ++wrong;
    for (int32_t b = 0; b <= 255; ++b) {
      const bool alike = pools[static_cast<size_t>(a)] == pools[static_cast<size_t>(b)];
      if (alike != (key == PoolingKeyOf(b))) ++wrong;
    }
  }
  CHECK(wrong == 0);
}

}  // namespace dozewell
