#include "prediction/day_groups.h"

#include <doctest/doctest.h>

namespace dozewell {

TEST_CASE("day groupings 0 and 127 pool no days, all others do") {
  for (int32_t grouping = -1; grouping <= 255; ++grouping) {
    CHECK(DayGroups(grouping).PoolDays() == (grouping != 0 && grouping != 127));
  }
}

}  // namespace dozewell
