#include "prediction/day_groups.h"

#include "base/numbers.h"

namespace dozewell {
namespace {

// The slots of one time of day.
struct TimeOfDay {
  const SlotRecord* onFirstDay;
  int64_t slotsPerDay;

  const SlotRecord& On(int day) const { return onFirstDay[day * slotsPerDay]; }
};

// What the older observations of several slots add up to.
struct OlderObservations {
  int32_t count = 0;
  int32_t sum = 0;

  void Add(const SlotRecord& slot) {
    count = Wrap32(int64_t{count} + slot.count);
    sum = Wrap32(int64_t{sum} + slot.sum);
  }
};

Observations Pooled(const TimeOfDay& slots, int day, std::span<const int> daysBefore,
                    const OlderObservations& older) {
  auto next = daysBefore.begin();
  const auto nextObservation = [&] {
    while (next != daysBefore.end()) {
      const int32_t last = slots.On(*next++).last;
      if (last != kNone) return last;
    }
    return kNone;
  };
  const int32_t last = nextObservation();
  if (last == kNone) return ObservationsOf(slots.On(day));
  const int32_t secondLast = nextObservation();
  return {older.count, older.sum, secondLast == kNone ? slots.On(day).last : secondLast, last};
}

}  // namespace

DayGroups::DayGroups(int32_t dayGrouping)
    : poolDays_(dayGrouping != 0 && dayGrouping != kEveryDay) {
  for (int day = 0; day < kDaysInWeek; ++day) {
    groupOfDay_[static_cast<size_t>(day)] = dayGrouping >> day & 1;
  }
  if (!poolDays_) return;
  for (int day = 0; day < kDaysInWeek; ++day) {
    Group& before = daysBefore_[static_cast<size_t>(day)];
    for (int back = 1; back <= kDaysInWeek; ++back) {
      const int other = (day + kDaysInWeek - back) % kDaysInWeek;
      if (GroupOf(other) == GroupOf(day)) before.days[before.count++] = other;
    }
  }
}

std::array<Observations, kDaysInWeek> DayGroups::Pool(const SlotRecord* slots, int slotsPerDay,
                                                      int timeOfDay) const {
  const TimeOfDay slotsOfTime = {slots + timeOfDay, slotsPerDay};
  std::array<OlderObservations, 2> older;
  for (int day = 0; day < kDaysInWeek; ++day) {
    older[static_cast<size_t>(GroupOf(day))].Add(slotsOfTime.On(day));
  }
  std::array<Observations, kDaysInWeek> pooled;
  for (int day = 0; day < kDaysInWeek; ++day) {
    pooled[static_cast<size_t>(day)] =
        Pooled(slotsOfTime, day, DaysBefore(day), older[static_cast<size_t>(GroupOf(day))]);
  }
  return pooled;
}

Observations DayGroups::PoolSlot(const SlotRecord* slots, int slotsPerDay, int slot) const {
  const TimeOfDay slotsOfTime = {slots + slot % slotsPerDay, slotsPerDay};
  const int day = slot / slotsPerDay;
  OlderObservations older;
  for (const int other : DaysBefore(day)) older.Add(slotsOfTime.On(other));
  return Pooled(slotsOfTime, day, DaysBefore(day), older);
}

}  // namespace dozewell
