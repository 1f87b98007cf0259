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
  for (int day = 0; day < kDaysInWeek; ++day) groupOfDay_[day] = dayGrouping >> day & 1;
}

std::array<Observations, kDaysInWeek> DayGroups::Pool(const SlotRecord* slots, int slotsPerDay,
                                                      int timeOfDay) const {
  struct Total {
    int32_t count = 0;
    int32_t sum = 0;
  };
  std::array<Total, 2> totals;
  // The last observation of each day, twice over, so that a walk backwards needs no wrapping.
  std::array<int32_t, 2 * kDaysInWeek> last;
  for (int day = 0; day < kDaysInWeek; ++day) {
    const SlotRecord& slot = slots[timeOfDay + day * slotsPerDay];
    Total& total = totals[groupOfDay_[day]];
    total.count = Wrap32(int64_t{total.count} + slot.count);
    total.sum = Wrap32(int64_t{total.sum} + slot.sum);
    last[day] = last[day + kDaysInWeek] = slot.last;
  }

  std::array<Observations, kDaysInWeek> pooled;
  for (int day = 0; day < kDaysInWeek; ++day) {
    const int group = groupOfDay_[day];
    Observations& result = pooled[day];
    result = {totals[group].count, totals[group].sum, kNone, kNone};
    for (int other = day + kDaysInWeek - 1; other >= day; --other) {
      if (groupOfDay_[other % kDaysInWeek] != group) continue;
      if (result.last == kNone) {
        result.last = last[other];
      } else if (result.secondLast == kNone) {
        result.secondLast = last[other];
      }
    }
    if (result.last == kNone) {
      result = ObservationsOf(slots[timeOfDay + day * slotsPerDay]);
    } else if (result.secondLast == kNone) {
      result.secondLast = last[day];
    }
  }
  return pooled;
}

}  // namespace dozewell
