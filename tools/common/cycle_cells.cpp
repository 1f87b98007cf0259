#include "common/cycle_cells.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "common/day_names.h"

namespace dozewell {
namespace {

constexpr int kMostCells = 48;
constexpr int kMinutesInRealDay = 1440;
// Labels have two digits for the hour.
constexpr int kMostMinutesInDay = 100 * 60;

struct Cycle {
  const CycleShape& shape;
  std::span<const SlotKnowledge> slots;
  int cellMinutes;

  // A week is shown from Monday on, other cycles from their first day.
  bool IsWeek() const {
    return shape.daysInCycle == kDaysInWeek && shape.minutesInDay == kMinutesInRealDay;
  }
  int DayOfRow(int row) const { return IsWeek() ? CycleDayFromMonday(row) : row; }
  std::string RowName(int row) const {
    return IsWeek() ? CycleDayName(DayOfRow(row)) : "day " + std::to_string(row);
  }

  CycleCells::Cell Cell(int day, int firstMinute) const;
  CycleCells::Row Row(int row) const;
};

CycleCells::Cell Cycle::Cell(int day, int firstMinute) const {
  const int64_t firstSlot = int64_t{day} * shape.SlotsPerDay();
  const int end = std::min(firstMinute + cellMinutes, shape.minutesInDay);
  double sum = 0;
  int known = 0;
  int64_t seen = 0;
  for (int minute = firstMinute; minute < end; ++minute) {
    const auto slot = static_cast<size_t>(firstSlot + minute / shape.minutesPerSlot);
    const float probability = slots[slot].probability;
    // Weights whose sum is 0 give not-a-number, which tells nothing either.
    if (probability == kUnknownProbability || std::isnan(probability)) continue;
    sum += std::clamp(probability, 0.0F, 1.0F);
    seen = known == 0 ? slots[slot].seen : std::min(seen, slots[slot].seen);
    ++known;
  }
  return {known > 0 ? std::optional(sum / known) : std::nullopt, seen};
}

CycleCells::Row Cycle::Row(int row) const {
  CycleCells::Row result = {RowName(row), DayOfRow(row), {}};
  for (int minute = 0; minute < shape.minutesInDay; minute += cellMinutes) {
    result.cells.push_back(Cell(DayOfRow(row), minute));
  }
  return result;
}

}  // namespace

std::optional<CycleCells> MakeCycleCells(const CycleShape& shape,
                                         std::span<const SlotKnowledge> slots) {
  const bool wholeDays = shape.IsUsable() && shape.minutesInDay > 0 &&
                         shape.minutesInDay <= kMostMinutesInDay &&
                         int64_t{shape.SlotsPerDay()} * shape.daysInCycle == std::ssize(slots);
  if (!wholeDays) return std::nullopt;
  const int cellMinutes = (shape.minutesInDay + kMostCells - 1) / kMostCells;
  const Cycle cycle = {shape, slots, cellMinutes};
  CycleCells cells = {cellMinutes, {}};
  for (int row = 0; row < shape.daysInCycle; ++row) cells.rows.push_back(cycle.Row(row));
  return cells;
}

}  // namespace dozewell
