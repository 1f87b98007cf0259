#include "walk/rates_walker.h"

#include "base/wall_clock.h"
#include "prediction/rates/rate_decision.h"
#include "prediction/time_line.h"

namespace dozewell {
namespace {

SleepPlan PlanOf(const RateDecision& decision, int64_t suspend) {
  SleepPlan plan = {suspend + decision.hibernate * kSecondsPerMinute, std::nullopt, std::nullopt};
  if (decision.second) {
    plan.wakeBack = suspend + decision.second->wake * kSecondsPerMinute;
    plan.secondHibernation = suspend + decision.second->hibernate * kSecondsPerMinute;
  }
  return plan;
}

}  // namespace

RatesWalker::RatesWalker(WalkCounter& counter, int64_t userTimeoutSeconds)
    : counter_(counter),
      userTimeoutSeconds_(userTimeoutSeconds),
      firstRates_(counter.AddForStrengths(WalkedKind::Rates, "rates")),
      firstWithoutWake_(
          counter.AddForStrengths(WalkedKind::RatesWithoutWake, "rates without wake")) {}

void RatesWalker::Walk(const WalkedSleep& sleep) {
  if (counter_.Result().weights.empty()) return;  // nobody asks what was learnt
  Forecast(sleep.suspend);
  const auto count = [&](size_t choice, int32_t weight, bool canWake) {
    counter_.Count(choice, OutcomesOfSleep(sleep, PlanAt(weight, canWake, sleep.suspend)));
  };
  for (size_t strength = 0; strength < counter_.Result().weights.size(); ++strength) {
    const int32_t weight = counter_.Result().weights[strength];
    count(firstRates_ + strength, weight, true);
    count(firstWithoutWake_ + strength, weight, false);
  }
  state_.Take(Suspend, sleep.suspend);
  state_.Take(Activating, sleep.resume);
}

// Nothing is predicted at a time that no calendar has.
void RatesWalker::Forecast(int64_t suspend) {
  forecast_.clear();
  if (suspend < 0 || suspend > kLastSecond) return;
  ForecastReturn(RatesAsAsked(state_.factors), suspend,
                 [&](const ForecastPiece& piece) { forecast_.push_back(piece); });
}

SleepPlan RatesWalker::PlanAt(int32_t weight, bool canWake, int64_t suspend) const {
  if (forecast_.empty()) return PlanOfTimeout(suspend, userTimeoutSeconds_);
  return PlanOf(DecideByForecast(forecast_, WishesOf(state_.learnt, weight, canWake)), suspend);
}

}  // namespace dozewell
