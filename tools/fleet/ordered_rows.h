#ifndef DOZEWELL_FLEET_ORDERED_ROWS_H_
#define DOZEWELL_FLEET_ORDERED_ROWS_H_

#include <cstddef>
#include <functional>

#include "fleet/machine_row.h"

namespace dozewell::fleet {

// Makes the rows from `first` to before `count` on this many threads, and hands them out on this
// one in their order. Only so many wait to be handed out that memory does not grow with their
// number. `make` may not throw. What `take` throws ends all of it and is thrown on.
void InOrder(size_t first, size_t count, int threads, const std::function<MachineRow(size_t)>& make,
             const std::function<void(MachineRow)>& take);

}  // namespace dozewell::fleet

#endif  // DOZEWELL_FLEET_ORDERED_ROWS_H_
