#ifndef DOZEWELL_OPTIMIZER_GRID_POOLING_KEY_H_
#define DOZEWELL_OPTIMIZER_GRID_POOLING_KEY_H_

#include <cstdint>

namespace dozewell {

// A key that is equal for day groupings that pool the same days. It is one of these groupings.
int32_t PoolingKeyOf(int32_t dayGrouping);

}  // namespace dozewell

#endif  // DOZEWELL_OPTIMIZER_GRID_POOLING_KEY_H_
