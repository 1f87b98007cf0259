#include "common/slot_knowledge.h"

#include <algorithm>
#include <cstddef>

namespace dozewell {
namespace {

int64_t OlderOf(const SlotRecord& slot) { return std::max(slot.count, 0); }

int64_t SeenAlone(const SlotRecord& slot) {
  if (slot.last == kNone) return 0;
  return slot.secondLast == kNone ? 1 : 2 + OlderOf(slot);
}

// A day whose last observation is the only one of its group stands for the second-last one too, so
// days are counted here, not what the probability was computed from.
int64_t SeenInGroup(const TrackerData& data, const DayGroups& groups, int slot) {
  const int slotsPerDay = ShapeOf(data).SlotsPerDay();
  const int group = groups.GroupOf(slot / slotsPerDay);
  int64_t days = 0;
  int64_t older = 0;
  for (int day = 0; day < kDaysInWeek; ++day) {
    if (groups.GroupOf(day) != group) continue;
    const SlotRecord& other = data.Slots()[day * slotsPerDay + slot % slotsPerDay];
    if (other.last != kNone) ++days;
    older += OlderOf(other);
  }
  return std::min<int64_t>(days, 2) + older;
}

}  // namespace

std::vector<SlotKnowledge> KnowledgeOfSlots(ArbitraryCycleProbabilityTracker& tracker) {
  const TrackerData& data = *tracker.GetData();
  const DayGroups* const groups = tracker.PooledDays();
  std::vector<SlotKnowledge> slots;
  slots.reserve(static_cast<size_t>(data.slotCount));
  for (int slot = 0; slot < data.slotCount; ++slot) {
    slots.push_back({tracker.GetSlotProbability(slot), groups == nullptr
                                                           ? SeenAlone(data.Slots()[slot])
                                                           : SeenInGroup(data, *groups, slot)});
  }
  return slots;
}

}  // namespace dozewell
