#include "walk/search_calendar.h"

#include <doctest/doctest.h>

#include <vector>

#include "base/wall_clock.h"

namespace dozewell {
namespace {

constexpr int64_t kDay = kSecondsPerDay;
constexpr int64_t kMinute = 60;

// A sleep of a second that ends at a time, with the record of its resume and the next suspend.
WalkedSleep SleepUntil(int64_t resume, std::optional<int64_t> nextSuspend = {},
                       size_t resumeRecord = 0) {
  return {resume - 1, resume, resumeRecord, nextSuspend};
}

}  // namespace

TEST_CASE("the first resume starts the clock, and a search is due when the interval has passed") {
  const std::vector<HistoryRecord> history(1);
  SearchCalendar calendar(history, {.intervalDays = 10});
  CHECK(calendar.SearchAfter(SleepUntil(kDay)) == std::nullopt);
  CHECK(calendar.SearchAfter(SleepUntil(11 * kDay)) == std::nullopt);
  CHECK(calendar.SearchAfter(SleepUntil(11 * kDay + 1)) == SearchRun{11 * kDay + 1, false});
  CHECK(calendar.SearchAfter(SleepUntil(21 * kDay)) == std::nullopt);
  CHECK(calendar.SearchAfter(SleepUntil(22 * kDay)) == SearchRun{22 * kDay, false});
}

TEST_CASE("a suspend before the search begins costs it, and the next one comes an interval later") {
  const std::vector<HistoryRecord> history(1);
  SearchCalendar calendar(history, {.intervalDays = 1, .delayMinutes = 30});
  calendar.SearchAfter(SleepUntil(kDay));
  const int64_t due = 3 * kDay;
  CHECK(calendar.SearchAfter(SleepUntil(due, due + 30 * kMinute)) == SearchRun{due, true});
  CHECK(calendar.SearchAfter(SleepUntil(due + kDay)) == std::nullopt);
  CHECK(calendar.SearchAfter(SleepUntil(due + 2 * kDay, due + 2 * kDay + 30 * kMinute + 1)) ==
        SearchRun{due + 2 * kDay, false});
}

TEST_CASE("without a delay no suspend comes before a search") {
  const std::vector<HistoryRecord> history(1);
  SearchCalendar calendar(history, {.intervalDays = 0, .delayMinutes = 0});
  calendar.SearchAfter(SleepUntil(kDay));
  CHECK(calendar.SearchAfter(SleepUntil(kDay + 1, kDay + 2)) == SearchRun{kDay + 1, false});
}

TEST_CASE("a search reads what was recorded until then") {
  std::vector<HistoryRecord> history;
  for (int day = 1; day <= 8; ++day) history.push_back({static_cast<double>(day * kDay), 0, 0});
  SearchCalendar calendar(history, {.intervalDays = 1, .delayMinutes = 0, .historyLimitDays = 3});
  calendar.SearchAfter(SleepUntil(kDay, {}, 0));
  // New records are saved however old they are.
  calendar.SearchAfter(SleepUntil(5 * kDay, {}, 4));
  CHECK(calendar.Known().data() == history.data());
  CHECK(calendar.Known().size() == 5);
  // Those that were saved before are dropped when they are older than the limit.
  calendar.SearchAfter(SleepUntil(8 * kDay, {}, 7));
  CHECK(calendar.Known().data() == history.data() + 4);
  CHECK(calendar.Known().size() == 4);
}

}  // namespace dozewell
