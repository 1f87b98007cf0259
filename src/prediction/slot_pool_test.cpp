#include "prediction/slot_pool.h"

#include <doctest/doctest.h>

#include <vector>

#include "support/random_slots.h"

namespace dozewell {
namespace {

constexpr int kTimesOfDay = 5;
constexpr int kAllSlots = kDaysInWeek * kTimesOfDay;

// Walks back through the cycle a day at a time until the slot itself.
Observations PooledPlainly(const std::vector<SlotRecord>& slots, int32_t dayGrouping, size_t slot) {
  const auto groupOf = [&](size_t other) { return dayGrouping >> (other / kTimesOfDay) & 1; };
  Observations pooled = {0, 0, kNone, kNone};
  for (size_t back = 1; back <= kDaysInWeek; ++back) {
    const size_t other = (slot + kAllSlots - back * kTimesOfDay) % kAllSlots;
    if (groupOf(other) != groupOf(slot)) continue;
    if (pooled.last == kNone) {
      pooled.last = slots[other].last;
    } else if (pooled.secondLast == kNone) {
      pooled.secondLast = slots[other].last;
    }
    pooled.count += slots[other].count;
    pooled.sum += slots[other].sum;
  }
  if (dayGrouping == 0 || dayGrouping == 127 || pooled.last == kNone) {
    return ObservationsOf(slots[slot]);
  }
  if (pooled.secondLast == kNone) pooled.secondLast = slots[slot].last;
  return pooled;
}

}  // namespace

TEST_CASE("every slot is pooled over the days of its group, for every grouping of days") {
  RandomHistories random(3);
  for (int32_t grouping = -1; grouping <= 255; ++grouping) {
    CAPTURE(grouping);
    const std::vector<SlotRecord> slots = RandomSlots(random, kAllSlots);
    const SlotPool pool(DayGroups(grouping), kTimesOfDay);
    for (int slot = 0; slot < kAllSlots; ++slot) {
      CHECK(pool.At(slots.data() + slot, slot / kTimesOfDay) ==
            PooledPlainly(slots, grouping, static_cast<size_t>(slot)));
    }
  }
}

TEST_CASE("bits of the grouping beyond the week and its sign do not matter") {
  std::vector<SlotRecord> slots(7, SlotRecord{kNone, kNone, kNone, kNone, kNone});
  slots[2].last = 1;
  for (const int32_t grouping : {12, 12 + 128, 12 - 128}) {
    const SlotPool pool(DayGroups(grouping), 1);
    CHECK(pool.At(&slots[3], 3).last == 1);
    CHECK(pool.At(&slots[4], 4).last == kNone);
  }
}

}  // namespace dozewell
