#ifndef DOZEWELL_WALK_RATES_WALKER_H_
#define DOZEWELL_WALK_RATES_WALKER_H_

#include <cstddef>
#include <cstdint>
#include <vector>

#include "prediction/rates/rates_state.h"
#include "prediction/rates/return_forecast.h"
#include "walk/walk_counter.h"
#include "walk/walked_sleep.h"

namespace dozewell {

// Walks with the predictor of rates at each strength, on machines that can be woken and on others.
class RatesWalker {
 public:
  // The counter must outlive the object.
  RatesWalker(WalkCounter& counter, int64_t userTimeoutSeconds);

  void Walk(const WalkedSleep& sleep);

 private:
  void Forecast(int64_t suspend);
  SleepPlan PlanAt(int32_t weight, bool canWake, int64_t suspend) const;

  WalkCounter& counter_;
  int64_t userTimeoutSeconds_;
  RatesState state_;
  std::vector<ForecastPiece> forecast_;  // of the sleep; empty when nothing is predicted
  size_t firstRates_;
  size_t firstWithoutWake_;
};

}  // namespace dozewell

#endif  // DOZEWELL_WALK_RATES_WALKER_H_
