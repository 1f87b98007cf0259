#include "prediction/suspend_decision.h"

#include <doctest/doctest.h>

#include "support/local_times.h"

namespace dozewell {
namespace {

// Saturday 2026-11-21 18:00.
const tm kSuspend = LocalTime(2026, 11, 21, 18);

}  // namespace

TEST_CASE("two predictions set timeout and timer and name all three times") {
  const SuspendDecision decision =
      DecideSuspend({{kSuspend, 45}, {LocalTime(2026, 11, 23, 8), 600}}, kSuspend);
  CHECK(decision.hibernateAt == L"Sat Nov 21 18:45:00 2026\n");
  CHECK(decision.sleepRestoredAt == L"Mon Nov 23 08:00:00 2026\n");
  CHECK(decision.hibernateNextAt == L"Mon Nov 23 18:00:00 2026\n");
  CHECK(decision.haMinutes == 45);
  CHECK(decision.nextSleepTime == LocalTime(2026, 11, 23, 8));
  CHECK(decision.timerMinutes == 2280);
  CHECK(decision.nextHAMinutes == 600);
}

TEST_CASE("one prediction sets the timeout and no timer") {
  const SuspendDecision decision = DecideSuspend({{kSuspend, 45}}, kSuspend);
  CHECK(decision.hibernateAt == L"Sat Nov 21 18:45:00 2026\n");
  CHECK(decision.sleepRestoredAt == L"never");
  CHECK(decision.hibernateNextAt == L"no prediction");
  CHECK(decision.haMinutes == 45);
  CHECK_FALSE(decision.nextSleepTime.has_value());
  CHECK_FALSE(decision.timerMinutes.has_value());
  CHECK_FALSE(decision.nextHAMinutes.has_value());
}

TEST_CASE("a second prediction that is not in the future is ignored") {
  for (const int second : {0, -1}) {
    const SuspendDecision decision =
        DecideSuspend({{kSuspend, 45}, {LocalTime(2026, 11, 21, 18, 0, second), 600}}, kSuspend);
    CHECK(decision.sleepRestoredAt == L"never");
    CHECK(decision.hibernateNextAt == L"no prediction");
    CHECK_FALSE(decision.nextSleepTime.has_value());
    CHECK_FALSE(decision.nextHAMinutes.has_value());
  }
}

TEST_CASE("no predictions, as when prediction is disabled, set nothing") {
  const SuspendDecision decision = DecideSuspend({}, kSuspend);
  CHECK(decision.hibernateAt == L"no prediction");
  CHECK(decision.sleepRestoredAt == L"never");
  CHECK(decision.hibernateNextAt == L"no prediction");
  CHECK_FALSE(decision.haMinutes.has_value());
  CHECK_FALSE(decision.timerMinutes.has_value());
}

TEST_CASE("a first prediction without minutes leaves the timeout alone") {
  const SuspendDecision decision = DecideSuspend({{kSuspend, kNoPrediction}}, kSuspend);
  CHECK(decision.hibernateAt == L"no prediction");
  CHECK_FALSE(decision.haMinutes.has_value());
}

TEST_CASE("a use without an idle stretch after it sets a timer and no next timeout") {
  const SuspendDecision decision =
      DecideSuspend({{kSuspend, 45}, {LocalTime(2026, 11, 23, 8), kNoPrediction}}, kSuspend);
  CHECK(decision.sleepRestoredAt == L"Mon Nov 23 08:00:00 2026\n");
  CHECK(decision.hibernateNextAt == L"no prediction");
  CHECK(decision.timerMinutes == 2280);
  CHECK_FALSE(decision.nextHAMinutes.has_value());
}

TEST_CASE("a use less than a minute away gives a timer of 0 minutes, which is not armed") {
  const SuspendDecision decision =
      DecideSuspend({{kSuspend, 45}, {LocalTime(2026, 11, 21, 18, 0, 59), 10}}, kSuspend);
  CHECK(decision.nextSleepTime.has_value());
  CHECK(decision.timerMinutes == 0);
}

TEST_CASE("the timeout lasts from now to the end of the predicted minutes") {
  const SuspendDecision decision =
      DecideSuspend({{LocalTime(2026, 11, 21, 18, 10, 30), 45}}, kSuspend);
  CHECK(decision.haMinutes == 55);
  CHECK(decision.hibernateAt == L"Sat Nov 21 18:55:30 2026\n");
}

TEST_CASE("a prediction of 0 minutes hibernates at its own start") {
  const SuspendDecision decision = DecideSuspend({{kSuspend, 0}}, kSuspend);
  CHECK(decision.hibernateAt == L"Sat Nov 21 18:00:00 2026\n");
  CHECK(decision.haMinutes == 0);
}

TEST_CASE("a time beyond the year 3000 has no text") {
  const tm late = LocalTime(3000, 12, 31, 23, 59);
  const SuspendDecision decision = DecideSuspend({{late, 1}}, late);
  CHECK(decision.hibernateAt.empty());
  CHECK(decision.haMinutes == 1);
}

}  // namespace dozewell
