#ifndef DOZEWELL_WALK_RATES_WALKER_H_
#define DOZEWELL_WALK_RATES_WALKER_H_

#include <cstddef>

#include "prediction/rates/rates_state.h"
#include "walk/walk_counter.h"
#include "walk/walked_sleep.h"

namespace dozewell {

// Walks with the predictor of rates at each strength, on machines that can be woken and on others.
class RatesWalker {
 public:
  // The counter must outlive the object.
  explicit RatesWalker(WalkCounter& counter);

  void Walk(const WalkedSleep& sleep);

 private:
  WalkCounter& counter_;
  RatesState state_;
  size_t firstRates_;
  size_t firstWithoutWake_;
};

}  // namespace dozewell

#endif  // DOZEWELL_WALK_RATES_WALKER_H_
