#include "prediction/slot_learner.h"

#include <algorithm>
#include <cstdlib>
#include <new>
#include <utility>

#include "base/exception.h"
#include "base/numbers.h"

namespace dozewell {
namespace {

TrackerDataPtr NewTrackerData(const CycleShape& shape) {
  const int32_t slotCount = shape.SlotCount();
  TrackerDataPtr data(
      static_cast<TrackerData*>(std::malloc(static_cast<size_t>(TrackerDataSize(slotCount)))));
  if (!data) throw std::bad_alloc();
  *data = {};
  data->daysInCycle = shape.daysInCycle;
  data->minutesInDay = shape.minutesInDay;
  data->minutesPerSlot = shape.minutesPerSlot;
  data->lastState = ContainerStopped;
  data->lastTime.tm_year = kNone;
  data->slotCount = slotCount;
  std::fill_n(data->Slots(), slotCount, SlotRecord{kNone, kNone, kNone, kNone, kNone});
  return data;
}

constexpr bool IsAsleepOrOff(int32_t state) { return state == Suspend || state == ShuttingDown; }

}  // namespace

SlotLearner::SlotLearner(const CycleShape& shape) : data_(NewTrackerData(shape)) {}

SlotLearner::SlotLearner(TrackerDataPtr data) : data_(std::move(data)) {}

std::optional<SlotRange> SlotLearner::ProcessEvent(const TimeLineEvent& event) {
  if (event.state == ContainerStopped) {
    throw FixedTextException("ContainerStopped should not be passed to the ProbabilityTracker");
  }
  std::optional<SlotRange> learnt;
  const int32_t previous = data_->lastState;
  if (previous != ContainerStopped && data_->lastTime.tm_year != kNone) {
    const bool sameStretch = (IsAsleepOrOff(previous) && IsAsleepOrOff(event.state)) ||
                             (previous == Activating && event.state == Activating);
    if (sameStretch) return std::nullopt;
    const int64_t start = SecondsFromTm(data_->lastTime);
    const int64_t end = SecondsFromTm(event.time);
    if (start == kInvalidTime || end == kInvalidTime) throw FixedTextException("wrong time ...");
    if (end <= start) throw FixedTextException("state start is later than state end");
    const bool inUse = previous == Activating;
    const auto range = inUse ? InUseSlots(start, end) : InactiveSlots(start, end);
    if (range) learnt = MarkSlots(*range, inUse, start);
  }
  data_->lastState = event.state;
  data_->lastTime = event.time;
  return learnt;
}

// Only slots that lie wholly inside the stretch count as not in use.
std::optional<SlotRange> SlotLearner::InactiveSlots(int64_t start, int64_t end) const {
  const int32_t slotSeconds = ShapeOf(*data_).SecondsPerSlot();
  const int64_t first = start / slotSeconds + 1;
  const int64_t last = end / slotSeconds - 1;
  if (first > last) return std::nullopt;
  return SlotRange{first % data_->slotCount, last % data_->slotCount};
}

// Every slot that the stretch touches counts as in use, but the first one only if it has not been
// marked in this turn of the cycle yet.
std::optional<SlotRange> SlotLearner::InUseSlots(int64_t start, int64_t end) const {
  const int32_t slotSeconds = ShapeOf(*data_).SecondsPerSlot();
  SlotRange range = {SlotAt(start), SlotAt(end)};
  const int64_t stamp = data_->Slots()[range.first].inUseStamp;
  if (stamp != kNone && WrapSubtract64(start, stamp) < slotSeconds) {
    const int64_t following = start / slotSeconds + 1;
    if (following > end / slotSeconds) return std::nullopt;
    range.first = following % data_->slotCount;
  }
  return range;
}

SlotRange SlotLearner::MarkSlots(const SlotRange& range, bool inUse, int64_t start) {
  const int32_t slotSeconds = ShapeOf(*data_).SecondsPerSlot();
  const int64_t last = range.first > range.last ? range.last + data_->slotCount : range.last;
  for (int64_t i = range.first; i <= last; ++i) {
    SlotRecord& slot = data_->Slots()[i % data_->slotCount];
    if (slot.secondLast != kNone) {
      slot.sum =
          slot.count == kNone ? slot.secondLast : Wrap32(int64_t{slot.sum} + slot.secondLast);
      slot.count = slot.count == kNone ? 1 : Wrap32(int64_t{slot.count} + 1);
    }
    if (slot.last != kNone) slot.secondLast = slot.last;
    slot.last = inUse ? 1 : 0;
    if (inUse) slot.inUseStamp = start + Wrap32((i - range.first) * slotSeconds);
  }
  return {range.first, last};
}

int SlotLearner::SlotAt(int64_t seconds) const {
  const CycleShape shape = ShapeOf(*data_);
  const auto secondOfCycle = static_cast<int32_t>(seconds % shape.SecondsPerCycle());
  const int slot = secondOfCycle / shape.SecondsPerSlot();
  // When the seconds of the cycle wrap at 32 bits, the number may exceed the slots that there are.
  return slot < data_->slotCount ? slot : slot % data_->slotCount;
}

}  // namespace dozewell
