#ifndef DOZEWELL_PREDICTION_SLOT_LEARNER_H_
#define DOZEWELL_PREDICTION_SLOT_LEARNER_H_

#include <cstdint>
#include <optional>

#include "prediction/time_line.h"
#include "prediction/tracker_data.h"

namespace dozewell {

// Slots of a cycle, first to last; last may lie in the next cycle.
struct SlotRange {
  int64_t first;
  int64_t last;
};

// Learns from events when a machine was in use, by the slots of a repeating cycle. Slot 0 begins
// with the cycle that began at 1970-01-01 00:00. Not thread-safe.
class SlotLearner {
 public:
  // A learner that has learnt nothing. The shape must be usable.
  explicit SlotLearner(const CycleShape& shape);
  // A learner that starts with data of a usable shape.
  explicit SlotLearner(TrackerDataPtr data);

  // Returns the slots that got a new observation. Throws FixedTextException for an event that does
  // not follow the one before.
  std::optional<SlotRange> ProcessEvent(const TimeLineEvent& event);

  const TrackerData& Data() const { return *data_; }
  // The slot of the cycle that a time in wall-clock seconds is in.
  int SlotAt(int64_t seconds) const;

 private:
  std::optional<SlotRange> InactiveSlots(int64_t start, int64_t end) const;
  std::optional<SlotRange> InUseSlots(int64_t start, int64_t end) const;
  SlotRange MarkSlots(const SlotRange& range, bool inUse, int64_t start);

  TrackerDataPtr data_;
};

}  // namespace dozewell

#endif  // DOZEWELL_PREDICTION_SLOT_LEARNER_H_
