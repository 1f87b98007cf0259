#include "optimizer/grid/outcome_table.h"

#include <doctest/doctest.h>

namespace dozewell {

TEST_CASE("what is added to ranges is found at exactly their pairs") {
  OutcomeTable table(3, 2);
  table.Add({0, 3}, {0, 2}, {1000, 0, 10, 0});
  table.Add({1, 3}, {0, 1}, {-7, 7, -1, 1});
  table.Add({1, 2}, {0, 2}, {0, 300, 0, 0});
  table.Add({2, 2}, {0, 2}, {9, 9, 9, 9});  // empty
  table.Finish();
  CHECK(table.At(0, 0) == Outcomes{1000, 0, 10, 0});
  CHECK(table.At(0, 1) == Outcomes{1000, 0, 10, 0});
  CHECK(table.At(1, 0) == Outcomes{993, 307, 9, 1});
  CHECK(table.At(1, 1) == Outcomes{1000, 300, 10, 0});
  CHECK(table.At(2, 0) == Outcomes{993, 7, 9, 1});
  CHECK(table.At(2, 1) == Outcomes{1000, 0, 10, 0});
}

}  // namespace dozewell
