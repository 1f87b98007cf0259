#include "optimizer/grid/observed_history.h"

#include <doctest/doctest.h>

#include <limits>
#include <optional>
#include <vector>

#include "support/sim_days.h"

namespace dozewell {
namespace {

constexpr int32_t kUngrouped[] = {0};

// The history must outlive the result.
std::optional<ObservedHistory> Observe(const std::vector<HistoryRecord>& history) {
  return ObserveHistory(history, kUngrouped);
}

}  // namespace

TEST_CASE("a sleep lasts until the next use, and has no resume when the history ends before one") {
  const auto observed =
      Observe({SimRecord(1, 0, 7), SimRecord(0, 0, 8), SimRecord(0, 0, 9), SimRecord(1, 0, 12, 5),
               SimRecord(1, 0, 12, 30), SimRecord(0, 0, 13), SimRecord(1, 0, 14),
               SimRecord(1, 0, 15), SimRecord(1, 0, 16)});
  REQUIRE(observed.has_value());
  const std::vector<ObservedSleep>& sleeps = observed->sleeps;
  REQUIRE(sleeps.size() == 2);
  CHECK(sleeps[0].start == SimTime(0, 12, 5));
  CHECK(sleeps[0].slotStart == SimTime(0, 12));
  CHECK(sleeps[0].next == SimTime(0, 12, 30));
  CHECK(sleeps[0].resume == SimTime(0, 13));
  CHECK(sleeps[1].start == SimTime(0, 14));
  CHECK(sleeps[1].next == SimTime(0, 15));
  CHECK_FALSE(sleeps[1].resume.has_value());
}

TEST_CASE("a sleep with a recorded hibernation keeps its records up to its resume") {
  const std::vector<HistoryRecord> history = {
      SimRecord(0, 0, 8),  SimRecord(1, 0, 12), SimRecord(1, 0, 13), SimRecord(2, 0, 14),
      SimRecord(0, 0, 20), SimRecord(2, 0, 21), SimRecord(1, 0, 22)};
  const auto observed = Observe(history);
  REQUIRE(observed.has_value());
  const std::vector<ObservedSleep>& sleeps = observed->sleeps;
  REQUIRE(sleeps.size() == 2);
  CHECK(sleeps[0].start == SimTime(0, 12));
  CHECK(sleeps[0].next == SimTime(0, 20));
  CHECK(sleeps[0].resume == SimTime(0, 20));
  CHECK(sleeps[0].recorded.data() == history.data() + 1);
  CHECK(sleeps[0].recorded.size() == 4);
  CHECK(sleeps[1].start == SimTime(0, 21));
  CHECK(sleeps[1].next == SimTime(0, 22));
  CHECK_FALSE(sleeps[1].resume.has_value());
  CHECK(sleeps[1].recorded.data() == history.data() + 5);
  CHECK(sleeps[1].recorded.size() == 2);
}

TEST_CASE("a sleep that ends the history is left out") {
  const auto observed =
      Observe({SimRecord(0, 0, 8), SimRecord(1, 0, 12), SimRecord(0, 0, 13), SimRecord(1, 0, 14)});
  REQUIRE(observed.has_value());
  CHECK(observed->sleeps.size() == 1);
}

TEST_CASE("for each sleep the slots after it are observed as they were learnt before it, in runs") {
  // A week later: in use from 8:00 to 12:00, idle to 13:00, in use to 14:00.
  const auto observed =
      Observe({SimRecord(0, 0, 8), SimRecord(1, 0, 12), SimRecord(0, 0, 13), SimRecord(1, 0, 14),
               SimRecord(0, 7, 8), SimRecord(1, 7, 10), SimRecord(0, 7, 13, 5)});
  REQUIRE(observed.has_value());
  REQUIRE(observed->slots.size() == 1);
  const ObservedSlots& slots = observed->slots[0];
  // Nothing is known at the first two sleeps. The third one's slots end two behind that of its end.
  CHECK(slots.firstRun == std::vector<size_t>{0, 0, 0, 3});
  CHECK(slots.end == std::vector<int32_t>{13, 18, 21});
  CHECK(slots.last == std::vector{1.0F, 0.0F, 1.0F});
  REQUIRE(slots.incomplete.size() == 3);
  CHECK(slots.incomplete[1].run == 1);
  CHECK(slots.incomplete[1].observations == Observations{kNone, kNone, kNone, 0});
}

TEST_CASE("the observed slots end before the first one without observations") {
  const auto observed =
      Observe({SimRecord(0, 0, 8), SimRecord(1, 0, 12), SimRecord(0, 0, 20), SimRecord(1, 0, 21),
               SimRecord(0, 6, 9), SimRecord(1, 7, 10), SimRecord(0, 15, 13)});
  REQUIRE(observed.has_value());
  const ObservedSlots& slots = observed->slots[0];
  CHECK(slots.firstRun == std::vector<size_t>{0, 0, 0, 4});
  // In use to 12:00 and from 20:00 to 21:00, then idle to 9:00 of day 13. The use that began on day
  // 6 is not learnt yet.
  CHECK(slots.end == std::vector<int32_t>{13, 60, 67, 858});
}

TEST_CASE("a history from which sets may learn different things is not observed") {
  const auto observes = [](size_t index, const HistoryRecord& record) {
    std::vector<HistoryRecord> history = {SimRecord(0, 0, 8), SimRecord(1, 0, 12),
                                          SimRecord(0, 0, 13)};
    history[index] = record;
    return Observe(history).has_value();
  };
  CHECK(observes(1, SimRecord(1, 0, 9)));
  CHECK(observes(1, SimRecord(2, 0, 9)));
  CHECK_FALSE(observes(1, SimRecord(3, 0, 9)));
  CHECK_FALSE(observes(1, SimRecord(1, 0, 8)));
  CHECK_FALSE(observes(0, {-1, 0, 0}));
  CHECK(observes(0, {0, 0, 0}));
  CHECK_FALSE(observes(2, {32535215999.0, 0, 0}));
  CHECK_FALSE(observes(2, {std::numeric_limits<double>::quiet_NaN(), 0, 0}));
  CHECK(Observe({SimRecord(7, 0, 8), SimRecord(7, 0, 8)}).has_value());
}

}  // namespace dozewell
