#include "optimizer/grid/slot_pool.h"

#include <doctest/doctest.h>

#include <vector>

#include "support/random_histories.h"

namespace dozewell {
namespace {

constexpr SlotRecord kBlank = {kNone, kNone, kNone, kNone, kNone};

std::vector<SlotRecord> RandomSlots(RandomHistories& random) {
  std::vector<SlotRecord> slots(kSimulatedSlots, kBlank);
  for (SlotRecord& slot : slots) {
    const auto bit = [&random] { return static_cast<int32_t>(random.Between(0, 1)); };
    if (random.Chance(30)) continue;
    slot.last = bit();
    if (random.Chance(30)) continue;
    slot.secondLast = bit();
    if (random.Chance(30)) continue;
    slot.count = static_cast<int32_t>(random.Between(1, 9));
    slot.sum = static_cast<int32_t>(random.Between(0, slot.count));
  }
  return slots;
}

}  // namespace

TEST_CASE("a slot is pooled as the tracker pools it, for every grouping of days") {
  RandomHistories random(3);
  const std::vector<SlotRecord> slots = RandomSlots(random);
  for (int32_t grouping = -1; grouping <= 255; ++grouping) {
    CAPTURE(grouping);
    const bool alone = grouping == 0 || grouping == 127;
    const SlotPool pool(grouping);
    const DayGroups groups(grouping);
    int differing = 0;
    for (int slot = 0; slot < kSimulatedSlots; ++slot) {
      const auto pooled =
          groups.Pool(slots.data(), kSimulatedSlotsPerDay, slot % kSimulatedSlotsPerDay);
      const Observations expected = alone
                                        ? ObservationsOf(slots[static_cast<size_t>(slot)])
                                        : pooled[static_cast<size_t>(slot / kSimulatedSlotsPerDay)];
      if (pool.At(slots.data(), slot) != expected) ++differing;
    }
    CHECK(differing == 0);
  }
}

TEST_CASE("day groupings of one key pool alike, and others do not") {
  CHECK(SlotPool::KeyOf(0) == SlotPool::KeyOf(127));
  CHECK(SlotPool::KeyOf(12) == SlotPool::KeyOf(115));
  CHECK(SlotPool::KeyOf(12) == SlotPool::KeyOf(12 + 128));
  CHECK(SlotPool::KeyOf(255) == SlotPool::KeyOf(128));
  CHECK(SlotPool::KeyOf(-1) == SlotPool::KeyOf(255));
  RandomHistories random(4);
  const std::vector<SlotRecord> slots = RandomSlots(random);
  const auto poolAll = [&slots](int32_t grouping) {
    const SlotPool pool(grouping);
    std::vector<Observations> all;
    all.reserve(kSimulatedSlots);
    for (int slot = 0; slot < kSimulatedSlots; ++slot) all.push_back(pool.At(slots.data(), slot));
    return all;
  };
  std::vector<std::vector<Observations>> pools;
  pools.reserve(256);
  for (int32_t grouping = 0; grouping <= 255; ++grouping) pools.push_back(poolAll(grouping));
  int wrong = 0;
  for (int32_t a = 0; a <= 255; ++a) {
    const int32_t key = SlotPool::KeyOf(a);
    REQUIRE(key >= 0);
    REQUIRE(key <= 255);
    if (pools[static_cast<size_t>(a)] != pools[static_cast<size_t>(key)]) ++wrong;
    for (int32_t b = 0; b <= 255; ++b) {
      const bool alike = pools[static_cast<size_t>(a)] == pools[static_cast<size_t>(b)];
      if (alike != (key == SlotPool::KeyOf(b))) ++wrong;
    }
  }
  CHECK(wrong == 0);
}

}  // namespace dozewell
