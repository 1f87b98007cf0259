#ifndef DOZEWELL_COMMON_CYCLE_CELLS_H_
#define DOZEWELL_COMMON_CYCLE_CELLS_H_

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "common/slot_knowledge.h"
#include "prediction/cycle_shape.h"

namespace dozewell {

// How likely a machine is in use over a cycle, in cells for a picture: a row for each day, from
// Monday on when the cycle is a week, at most 48 cells in each.
struct CycleCells {
  struct Cell {
    std::optional<double> likely;  // 0 to 1; nothing where nothing is known
    int64_t seen;                  // how often the least seen minute that is known was seen, or 0

    bool operator==(const Cell&) const = default;
  };
  struct Row {
    std::string name;  // "Mon", or "day 0"
    int day;           // its number in the cycle
    std::vector<Cell> cells;
  };

  int cellMinutes;
  std::vector<Row> rows;
};

// A cell is the mean of what is known about its minutes. Nothing unless the cycle consists of whole
// days of up to 100 hours each, and `slots` are all of its slots.
std::optional<CycleCells> MakeCycleCells(const CycleShape& shape,
                                         std::span<const SlotKnowledge> slots);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_CYCLE_CELLS_H_
