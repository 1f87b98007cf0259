#ifndef DOZEWELL_TESTS_SUPPORT_RANDOM_SLOTS_H_
#define DOZEWELL_TESTS_SUPPORT_RANDOM_SLOTS_H_

#include <cstddef>
#include <vector>

#include "prediction/tracker_data.h"
#include "support/random_histories.h"

namespace dozewell {

// Slots as a tracker may have learnt them, some with only one observation or none.
inline std::vector<SlotRecord> RandomSlots(RandomHistories& random, int count) {
  std::vector<SlotRecord> slots(static_cast<size_t>(count),
                                SlotRecord{kNone, kNone, kNone, kNone, kNone});
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

}  // namespace dozewell

#endif  // DOZEWELL_TESTS_SUPPORT_RANDOM_SLOTS_H_
