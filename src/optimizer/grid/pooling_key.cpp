#include "optimizer/grid/pooling_key.h"

#include <algorithm>

#include "prediction/day_groups.h"

namespace dozewell {

int32_t PoolingKeyOf(int32_t dayGrouping) {
  constexpr int32_t kOneGroup = kEveryDay + 1;
  if (!DayGroups(dayGrouping).PoolDays()) return 0;
  const int32_t days = dayGrouping & kEveryDay;
  const int32_t smaller = std::min(days, kEveryDay - days);
  return smaller == 0 ? kOneGroup : smaller;
}

}  // namespace dozewell
