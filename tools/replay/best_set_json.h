#ifndef DOZEWELL_REPLAY_BEST_SET_JSON_H_
#define DOZEWELL_REPLAY_BEST_SET_JSON_H_

#include "common/json.h"
#include "optimizer/best_set.h"

namespace dozewell::replay {

// The numbers of a set in a list, in the order of its text; null when there is no set.
Json SetJson(const BestSetApplication& application);

}  // namespace dozewell::replay

#endif  // DOZEWELL_REPLAY_BEST_SET_JSON_H_
