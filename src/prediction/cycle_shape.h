#ifndef DOZEWELL_PREDICTION_CYCLE_SHAPE_H_
#define DOZEWELL_PREDICTION_CYCLE_SHAPE_H_

#include <cstdint>

namespace dozewell {

class IConfigurations;

constexpr int kDaysInWeek = 7;

// A cycle of days: how long it is and how it is cut into slots.
struct CycleShape {
  int32_t daysInCycle;
  int32_t minutesInDay;
  int32_t minutesPerSlot;

  // Products wrap at 32 bits, as the sizes derived from them do.
  int32_t SecondsPerSlot() const;
  int32_t SecondsPerCycle() const;
  int32_t SlotCount() const;  // 0 for slots of no length
  int32_t SlotsPerDay() const { return minutesInDay / minutesPerSlot; }

  // True when slots and cycle have a length, there is at least one slot, and the size of the data
  // fits 32 bits: what every calculation with slots needs.
  bool IsUsable() const;

  bool operator==(const CycleShape&) const = default;
};

// The cycle as configured, which need not be usable. A missing number reads as kNone.
CycleShape ReadCycleShape(IConfigurations& configuration);

}  // namespace dozewell

#endif  // DOZEWELL_PREDICTION_CYCLE_SHAPE_H_
