#include "prediction/rates/rates_state.h"

#include <algorithm>

#include "prediction/time_line.h"

namespace dozewell {

void RatesState::Take(int32_t state, int64_t time) {
  if (time < 0) return;
  newest = std::max(newest, time);
  if (state == ContainerStopped) return;
  if (state != Activating) {
    if (suspend == kNone) suspend = time;
  } else if (suspend != kNone) {
    if (learnt.Learn(suspend, time)) factors.Fit(learnt);
    suspend = kNone;
  }
}

}  // namespace dozewell
