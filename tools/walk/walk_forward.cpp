#include "walk/walk_forward.h"

#include <algorithm>

#include "common/clairvoyant.h"
#include "settings/setting_names.h"
#include "walk/rates_walker.h"
#include "walk/slot_walker.h"
#include "walk/timeout_walker.h"
#include "walk/walk_counter.h"
#include "walk/walked_sleep.h"

namespace dozewell {

const WalkedChoice& Walk::Of(WalkedKind kind, size_t strength) const {
  return *std::ranges::find_if(choices, [&](const WalkedChoice& choice) {
    return choice.kind == kind && choice.strength.value_or(strength) == strength;
  });
}

const WalkedChoice& Walk::Timeout(int64_t minutes) const {
  return *std::ranges::find_if(choices, [&](const WalkedChoice& choice) {
    return choice.kind == WalkedKind::Fixed && choice.hibernateAfterMinutes == minutes;
  });
}

Walk WalkForward(std::span<const HistoryRecord> history, IConfigurations& configuration,
                 int64_t userTimeoutSeconds, const SearchHabits& habits) {
  Walk walk;
  walk.weights = ReadPredictorNumbers(configuration, kScoringWeightsName);
  WalkCounter counter(walk);
  TimeoutWalker timeouts(counter, userTimeoutSeconds);
  SlotWalker slots(counter, history, configuration, userTimeoutSeconds, habits);
  RatesWalker rates(counter, userTimeoutSeconds);
  const size_t clairvoyant = counter.Add(WalkedKind::Clairvoyant, "clairvoyant");
  for (const WalkedSleep& sleep : SleepsOf(history)) {
    counter.Begin(sleep);
    timeouts.Walk(sleep);
    slots.Walk(sleep);
    rates.Walk(sleep);
    counter.Count(clairvoyant,
                  OutcomesOfSleep(sleep, ClairvoyantPlan(sleep.suspend, sleep.resume)));
  }
  timeouts.Finish();
  walk.searches = slots.Searches();
  return walk;
}

}  // namespace dozewell
