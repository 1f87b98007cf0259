#include "walk/walked_sleep.h"

#include "base/exception.h"
#include "base/numbers.h"
#include "base/wall_clock.h"
#include "optimizer/simulator/simulator.h"

namespace dozewell {
namespace {

bool IsSleep(const HistoryRecord& record) {
  if (record.asleep >= kHistoryCodes) throw FixedTextException(kUnknownEvent);
  return record.asleep != kUseCode;
}

}  // namespace

std::vector<WalkedSleep> SleepsOf(std::span<const HistoryRecord> history) {
  std::vector<WalkedSleep> sleeps;
  if (history.size() < kFewestSimulatedRecords) return sleeps;
  bool asleep = false;
  int64_t suspend = 0;
  for (size_t i = 0; i < history.size(); ++i) {
    const int64_t time = TruncateToInt64(history[i].time);
    if (IsSleep(history[i]) == asleep) continue;
    if (asleep) {
      sleeps.push_back({suspend, time, i, std::nullopt});
    } else {
      suspend = time;
      if (!sleeps.empty()) sleeps.back().nextSuspend = time;
    }
    asleep = !asleep;
  }
  return sleeps;
}

SleepPlan PlanOfTimeout(int64_t suspend, int64_t timeoutSeconds) {
  if (timeoutSeconds < 1) return {};
  return {WrapAdd64(suspend, timeoutSeconds), std::nullopt, std::nullopt};
}

SleepPlan PlanOfDecision(const SuspendDecision& decision, int64_t suspend,
                         int64_t userTimeoutSeconds, bool canWake) {
  if (!decision.haMinutes) return PlanOfTimeout(suspend, userTimeoutSeconds);
  // The power scheme takes 0 as never, and a negative number as more minutes than anybody waits.
  if (*decision.haMinutes <= 0) return {};
  SleepPlan plan = PlanOfTimeout(suspend, *decision.haMinutes * kSecondsPerMinute);
  if (!canWake || decision.timerMinutes.value_or(0) <= *decision.haMinutes) return plan;
  plan.wakeBack = WrapAdd64(suspend, *decision.timerMinutes * kSecondsPerMinute);
  const int32_t secondMinutes = decision.nextHAMinutes.value_or(*decision.haMinutes);
  if (secondMinutes > 0) {
    plan.secondHibernation = WrapAdd64(*plan.wakeBack, secondMinutes * kSecondsPerMinute);
  }
  return plan;
}

Outcomes OutcomesOfSleep(const WalkedSleep& sleep, const SleepPlan& plan) {
  Outcomes outcomes;
  int64_t since = sleep.suspend;
  bool hibernated = false;
  for (const auto& change : {plan.hibernation, plan.wakeBack, plan.secondHibernation}) {
    if (!change || *change >= sleep.resume) break;
    (hibernated ? outcomes.hibernateSeconds : outcomes.sleepSeconds) +=
        WrapSubtract64(*change, since);
    since = *change;
    hibernated = !hibernated;
  }
  (hibernated ? outcomes.hibernateSeconds : outcomes.sleepSeconds) +=
      WrapSubtract64(sleep.resume, since);
  ++(hibernated ? outcomes.resumesFromHibernate : outcomes.resumesFromSleep);
  return outcomes;
}

}  // namespace dozewell
