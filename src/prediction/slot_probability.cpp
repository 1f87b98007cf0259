#include "prediction/slot_probability.h"

#include "base/numbers.h"
#include "prediction/tracker.h"

namespace dozewell {

float EstimateProbability(const Observations& observations, const ObservationWeights& weights) {
  if (observations.last == kNone) return kUnknownProbability;
  const auto last = static_cast<float>(observations.last);
  if (observations.secondLast == kNone) return last;
  const auto secondLast = static_cast<float>(observations.secondLast);
  const float recent = last * weights.firstLast + secondLast * weights.secondLast;
  if (observations.sum == kNone) return recent / (weights.firstLast + weights.secondLast);
  const auto sum = static_cast<float>(observations.sum);
  const auto count = static_cast<float>(observations.count);
  return recent + (sum / count) * weights.agregation;
}

Observations ObservationsOf(const SlotRecord& slot) {
  return {slot.count, slot.sum, slot.secondLast, slot.last};
}

DayGroups::DayGroups(int32_t dayGrouping) {
  for (int day = 0; day < kDaysInWeek; ++day) {
    groupOfDay_[day] = dayGrouping >> day & 1;
    ++groupSize_[groupOfDay_[day]];
  }
  for (int day = 0; day < kDaysInWeek; ++day) {
    auto next = daysBefore_[day].begin();
    for (int back = 1; back <= kDaysInWeek; ++back) {
      const int other = (day + kDaysInWeek - back) % kDaysInWeek;
      if (groupOfDay_[other] == groupOfDay_[day]) *next++ = other;
    }
  }
}

std::array<Observations, kDaysInWeek> DayGroups::Pool(const SlotRecord* slots, int slotsPerDay,
                                                      int timeOfDay) const {
  struct Total {
    int32_t count = 0;
    int32_t sum = 0;
  };
  std::array<Total, 2> totals;
  std::array<const SlotRecord*, kDaysInWeek> slotOfDay;
  for (int day = 0; day < kDaysInWeek; ++day) {
    const SlotRecord* const slot = slots + timeOfDay + int64_t{day} * slotsPerDay;
    slotOfDay[day] = slot;
    Total& total = totals[groupOfDay_[day]];
    total.count = Wrap32(int64_t{total.count} + slot->count);
    total.sum = Wrap32(int64_t{total.sum} + slot->sum);
  }

  std::array<Observations, kDaysInWeek> pooled;
  for (int day = 0; day < kDaysInWeek; ++day) {
    const int group = groupOfDay_[day];
    auto next = daysBefore_[day].begin();
    const auto end = next + groupSize_[group];
    const auto nextObservation = [&] {
      while (next != end) {
        const int32_t last = slotOfDay[*next++]->last;
        if (last != kNone) return last;
      }
      return kNone;
    };
    const int32_t last = nextObservation();
    const int32_t secondLast = nextObservation();
    if (last == kNone) {
      pooled[day] = ObservationsOf(*slotOfDay[day]);
    } else {
      pooled[day] = {totals[group].count, totals[group].sum,
                     secondLast == kNone ? slotOfDay[day]->last : secondLast, last};
    }
  }
  return pooled;
}

}  // namespace dozewell
