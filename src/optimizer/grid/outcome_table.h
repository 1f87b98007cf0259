#ifndef DOZEWELL_OPTIMIZER_GRID_OUTCOME_TABLE_H_
#define DOZEWELL_OPTIMIZER_GRID_OUTCOME_TABLE_H_

#include <cstddef>
#include <cstdint>
#include <vector>

#include "optimizer/simulator/sim_time_line.h"

namespace dozewell {

// The indexes from `begin` up to, but without, `end`.
struct IndexRange {
  uint32_t begin;
  uint32_t end;
};

// The outcomes for each pair of a low and a high threshold. Adding is as cheap for a range of pairs
// as for one; reading comes after all adding.
class OutcomeTable {
 public:
  OutcomeTable(size_t lows, size_t highs);

  // Adds to every pair of the two ranges.
  void Add(const IndexRange& lows, const IndexRange& highs, const Outcomes& outcomes) {
    AddTo(Cell(lows.begin, highs.begin), outcomes, 1);
    AddTo(Cell(lows.begin, highs.end), outcomes, -1);
    AddTo(Cell(lows.end, highs.begin), outcomes, -1);
    AddTo(Cell(lows.end, highs.end), outcomes, 1);
  }
  // To be called once, after the last Add and before the first At.
  void Finish();
  const Outcomes& At(size_t low, size_t high) const { return cells_[low * columns_ + high]; }

 private:
  static void AddTo(Outcomes& sum, const Outcomes& outcomes, int sign) {
    sum.sleepSeconds += sign * outcomes.sleepSeconds;
    sum.hibernateSeconds += sign * outcomes.hibernateSeconds;
    sum.resumesFromSleep += sign * outcomes.resumesFromSleep;
    sum.resumesFromHibernate += sign * outcomes.resumesFromHibernate;
  }

  Outcomes& Cell(size_t low, size_t high) { return cells_[low * columns_ + high]; }

  // Before Finish a cell holds a difference: outcomes are the sums over all cells with smaller or
  // equal indexes, so adding to a range changes only four cells.
  size_t rows_;
  size_t columns_;
  std::vector<Outcomes> cells_;
};

}  // namespace dozewell

#endif  // DOZEWELL_OPTIMIZER_GRID_OUTCOME_TABLE_H_
