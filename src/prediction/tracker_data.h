#ifndef DOZEWELL_PREDICTION_TRACKER_DATA_H_
#define DOZEWELL_PREDICTION_TRACKER_DATA_H_

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

#include "base/wall_clock.h"
#include "prediction/cycle_shape.h"

namespace dozewell {

// Stands for no value in the fields of a slot and in the last event's year.
constexpr int32_t kNone = -1;

// What is known of one slot of the cycle. An observation is 1 for in use, 0 for not in use.
struct SlotRecord {
  int32_t count;       // older observations that were folded into `sum`
  int32_t sum;         // how many of those were in use
  int32_t secondLast;  // observation
  int32_t last;        // observation
  int64_t inUseStamp;  // wall-clock seconds at which the slot was last marked as in use

  bool operator==(const SlotRecord&) const = default;
};
static_assert(sizeof(SlotRecord) == 24);

// All that a tracker has learnt, and byte for byte the content of the file "cpredict.z7": this
// header, and behind it, in the same allocation, one record for each slot of the cycle.
struct TrackerData {
  uint32_t version;  // 0
  int32_t daysInCycle;
  int32_t minutesInDay;
  int32_t minutesPerSlot;
  int32_t lastState;  // of the last accepted event
  tm lastTime;        // of the same event; tm_year is kNone before the first one
  int32_t slotCount;
  int32_t reserved;

  SlotRecord* Slots() { return reinterpret_cast<SlotRecord*>(this + 1); }
  const SlotRecord* Slots() const { return reinterpret_cast<const SlotRecord*>(this + 1); }
};
static_assert(sizeof(TrackerData) == 64);
static_assert(offsetof(TrackerData, lastTime) == 20 && offsetof(TrackerData, slotCount) == 56);
static_assert(std::endian::native == std::endian::little, "data files are little-endian");

struct FreeMemory {
  void operator()(void* memory) const { std::free(memory); }
};
// Allocated with malloc.
using TrackerDataPtr = std::unique_ptr<TrackerData, FreeMemory>;

// The bytes of a header and `slotCount` slots.
constexpr int64_t TrackerDataSize(int32_t slotCount) {
  return int64_t{slotCount} * int64_t{sizeof(SlotRecord)} + int64_t{sizeof(TrackerData)};
}

TrackerDataPtr CopyOf(const TrackerData& data);

CycleShape ShapeOf(const TrackerData& data);

}  // namespace dozewell

#endif  // DOZEWELL_PREDICTION_TRACKER_DATA_H_
