#include "prediction/rates/rates_state.h"

#include <algorithm>

#include "prediction/time_line.h"

namespace dozewell {

bool RatesState::Take(int32_t state, int64_t time) {
  if (time < 0) return false;
  newest = std::max(newest, time);
  if (state == ContainerStopped) return false;
  if (state != Activating) {
    if (suspend == kNone) suspend = time;
    return false;
  }
  if (suspend == kNone) return false;
  const bool isLearnt = learnt.Learn(suspend, time);
  if (isLearnt) factors.Fit(learnt);
  suspend = kNone;
  return isLearnt;
}

}  // namespace dozewell
