#include "optimizer/grid/thresholds.h"

#include <doctest/doctest.h>

namespace dozewell {

TEST_CASE("thresholds are fractions in ascending order, each once, and pairs point to them") {
  const Thresholds thresholds({{70, 30}, {50, 30}, {70, -10}});
  CHECK(thresholds.lows == std::vector{-0.1F, 0.3F});
  CHECK(thresholds.highs == std::vector{0.5F, 0.7F});
  REQUIRE(thresholds.pairs.size() == 3);
  CHECK(thresholds.pairs[0].low == 1);
  CHECK(thresholds.pairs[0].high == 1);
  CHECK(thresholds.pairs[1].low == 1);
  CHECK(thresholds.pairs[1].high == 0);
  CHECK(thresholds.pairs[2].low == 0);
  CHECK(thresholds.pairs[2].high == 1);
  CHECK(thresholds.AllLows().end == 2);
  CHECK(thresholds.AllHighs().end == 2);
}

}  // namespace dozewell
