#include "optimizer/grid/outcome_table.h"

namespace dozewell {

OutcomeTable::OutcomeTable(size_t lows, size_t highs)
    : rows_(lows + 1), columns_(highs + 1), cells_(rows_ * columns_) {}

void OutcomeTable::Finish() {
  for (size_t low = 0; low < rows_; ++low) {
    for (size_t high = 1; high < columns_; ++high) AddTo(Cell(low, high), Cell(low, high - 1), 1);
  }
  for (size_t low = 1; low < rows_; ++low) {
    for (size_t high = 0; high < columns_; ++high) AddTo(Cell(low, high), Cell(low - 1, high), 1);
  }
}

}  // namespace dozewell
