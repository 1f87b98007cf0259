#ifndef DOZEWELL_TESTS_SUPPORT_WALKS_H_
#define DOZEWELL_TESTS_SUPPORT_WALKS_H_

#include <cstdint>
#include <utility>
#include <vector>

#include "walk/walk_forward.h"

namespace dozewell {

// A walk of four sleeps, two in each of two weeks that are alike, with a weight of 30 and one of
// 50. Each choice is asleep for its number of hours of 100, and makes its user wait so often.
inline Walk ExampleWalk() {
  Walk walk;
  walk.weights = {30, 50};
  walk.searches = {{0, false}, {0, true}, {0, false}};
  walk.sleeps = 4;
  walk.weeks = 2;
  const auto add = [&walk](WalkedChoice choice, int64_t hours, int32_t waits) {
    constexpr int64_t kHalfHour = 1800;
    const Outcomes week = {hours * kHalfHour, (100 - hours) * kHalfHour, 2 - waits / 2, waits / 2};
    choice.weeks = {week, week};
    choice.outcomes = {2 * week.sleepSeconds, 2 * week.hibernateSeconds, 2 * week.resumesFromSleep,
                       2 * week.resumesFromHibernate};
    walk.choices.push_back(std::move(choice));
  };
  add({WalkedKind::Fixed, "never", {}, 0}, 100, 0);
  add({WalkedKind::Fixed, "180 minutes", {}, 180}, 60, 2);
  add({WalkedKind::Settings, "settings"}, 30, 2);
  for (size_t strength = 0; strength < walk.weights.size(); ++strength) {
    const auto hours = static_cast<int64_t>(strength);
    add({WalkedKind::BestFixed, "best fixed", strength, 180}, 60, 2);
    add({WalkedKind::PastFixed, "past fixed", strength}, 61 + hours, 2);
    add({WalkedKind::Service, "service", strength}, 20 + hours, 0);
    add({WalkedKind::ServiceWithoutWake, "service without wake", strength}, 22 + hours, 4);
    add({WalkedKind::Rates, "rates", strength}, 10 + hours, 0);
    add({WalkedKind::RatesWithoutWake, "rates without wake", strength}, 12 + hours, 2);
  }
  add({WalkedKind::Clairvoyant, "clairvoyant"}, 1, 0);
  return walk;
}

}  // namespace dozewell

#endif  // DOZEWELL_TESTS_SUPPORT_WALKS_H_
