#include "walk/walked_sleep.h"

#include <doctest/doctest.h>

#include "base/exception.h"

namespace dozewell {
namespace {

constexpr int64_t kOwnTimeout = 3600;

SuspendDecision Decision(std::optional<int32_t> haMinutes, std::optional<int32_t> timerMinutes = {},
                         std::optional<int32_t> nextHAMinutes = {}) {
  SuspendDecision decision;
  decision.haMinutes = haMinutes;
  decision.timerMinutes = timerMinutes;
  decision.nextHAMinutes = nextHAMinutes;
  return decision;
}

SleepPlan Plan(const SuspendDecision& decision, bool canWake = true) {
  return PlanOfDecision(decision, 1000, kOwnTimeout, canWake);
}

Outcomes OutcomesOf(int64_t seconds, const SleepPlan& plan) {
  return OutcomesOfSleep({1000, 1000 + seconds, 1, std::nullopt}, plan);
}

}  // namespace

TEST_CASE("sleeps last from the first record asleep to the first in use") {
  const std::vector<HistoryRecord> history = {{100, 0, 0}, {200.9, 1, 0}, {250, 2, 0}, {300, 0, 0},
                                              {310, 0, 0}, {400, 3, 0},   {500, 0, 0}, {600, 1, 0}};
  CHECK(SleepsOf(history) == std::vector<WalkedSleep>{{200, 300, 3, 400}, {400, 500, 6, 600}});
}

TEST_CASE("a history may begin asleep") {
  const std::vector<HistoryRecord> history = {{100, 1, 0}, {200, 0, 0}, {300, 1, 0}};
  CHECK(SleepsOf(history) == std::vector<WalkedSleep>{{100, 200, 1, 300}});
}

TEST_CASE("a history that is too short to be simulated has no sleeps") {
  CHECK(SleepsOf(std::vector<HistoryRecord>{{100, 1, 0}, {200, 0, 0}}).empty());
}

TEST_CASE("a history with an unknown code has no sleeps") {
  CHECK_THROWS_AS(SleepsOf(std::vector<HistoryRecord>{{100, 1, 0}, {200, 0, 0}, {300, 4, 0}}),
                  FixedTextException);
}

TEST_CASE("a timeout hibernates once, and none never") {
  CHECK(PlanOfTimeout(1000, 60) == SleepPlan{1060, std::nullopt, std::nullopt});
  CHECK(PlanOfTimeout(1000, 0) == SleepPlan{});
}

TEST_CASE("where nothing is predicted the user's own timeout holds") {
  CHECK(Plan(Decision(std::nullopt)) == SleepPlan{1000 + kOwnTimeout, std::nullopt, std::nullopt});
  CHECK(PlanOfDecision(Decision(std::nullopt), 1000, 0, true) == SleepPlan{});
}

TEST_CASE("a decision is carried out in minutes from the suspend on") {
  CHECK(Plan(Decision(5)) == SleepPlan{1300, std::nullopt, std::nullopt});
  CHECK(Plan(Decision(5, 60, 10)) == SleepPlan{1300, 4600, 5200});
}

TEST_CASE("a machine that cannot be woken stays in hibernation") {
  CHECK(Plan(Decision(5, 60, 10), false) == SleepPlan{1300, std::nullopt, std::nullopt});
}

TEST_CASE("a timer that fires before the hibernation brings nothing back") {
  CHECK(Plan(Decision(5, 5, 10)) == SleepPlan{1300, std::nullopt, std::nullopt});
  CHECK(Plan(Decision(5, 6, 10)) == SleepPlan{1300, 1360, 1960});
}

TEST_CASE("without a second timeout the first one is still in the power scheme") {
  CHECK(Plan(Decision(5, 60)) == SleepPlan{1300, 4600, 4900});
}

TEST_CASE("a timeout of no minutes never hibernates") {
  CHECK(Plan(Decision(0, 60, 10)) == SleepPlan{});
  CHECK(Plan(Decision(-3)) == SleepPlan{});
  CHECK(Plan(Decision(5, 60, 0)) == SleepPlan{1300, 4600, std::nullopt});
}

TEST_CASE("a resume ends what is planned") {
  const SleepPlan plan = {1300, 4600, 5200};
  CHECK(OutcomesOf(300, plan) == Outcomes{300, 0, 1, 0});
  CHECK(OutcomesOf(301, plan) == Outcomes{300, 1, 0, 1});
  CHECK(OutcomesOf(3600, plan) == Outcomes{300, 3300, 0, 1});
  CHECK(OutcomesOf(3601, plan) == Outcomes{301, 3300, 1, 0});
  CHECK(OutcomesOf(5000, plan) == Outcomes{900, 4100, 0, 1});
}

}  // namespace dozewell
