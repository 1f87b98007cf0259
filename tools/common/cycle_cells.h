#ifndef DOZEWELL_COMMON_CYCLE_CELLS_H_
#define DOZEWELL_COMMON_CYCLE_CELLS_H_

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "prediction/tracker_data.h"

namespace dozewell {

// How likely a machine is in use over a cycle, in cells for a picture: a row for each day, from
// Monday on when the cycle is a week, at most 48 cells in each.
struct CycleCells {
  struct Row {
    std::string name;                          // "Mon", or "day 0"
    int day;                                   // its number in the cycle
    std::vector<std::optional<double>> cells;  // 0 to 1; nothing where nothing is known
  };

  int cellMinutes;
  std::vector<Row> rows;
};

// A cell is the mean of what is known about its minutes. `probabilities` are those of all slots.
// Nothing unless the cycle consists of whole days of up to 100 hours each.
std::optional<CycleCells> MakeCycleCells(const CycleShape& shape,
                                         std::span<const float> probabilities);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_CYCLE_CELLS_H_
