#include "event_log/clock_correction.h"

#include <doctest/doctest.h>

namespace dozewell {
namespace {

constexpr int64_t kDay = 86400;
constexpr int64_t kHourSeconds = 3600;
constexpr int64_t kNow = 20000 * kDay;

LogEvent Event(uint64_t record, int64_t time, LogEventKind kind = LogEventKind::Other) {
  LogEvent event;
  event.record = record;
  event.time = time;
  event.kind = kind;
  return event;
}

LogEvent ClockSet(uint64_t record, int64_t oldTime, int64_t newTime) {
  LogEvent event = Event(record, newTime, LogEventKind::ClockSet);
  event.oldTime = oldTime;
  event.newTime = newTime;
  return event;
}

struct Ordered {
  std::vector<uint64_t> records;
  std::vector<int64_t> times;
  ClockCorrections corrections;
};

Ordered Order(std::vector<LogEvent> events) {
  Ordered ordered;
  ordered.corrections = PutInOrder(events);
  for (const LogEvent& event : events) {
    ordered.records.push_back(event.record);
    ordered.times.push_back(event.time);
  }
  return ordered;
}

using Records = std::vector<uint64_t>;
using Times = std::vector<int64_t>;

}  // namespace

TEST_CASE("events are put in the order of their times") {
  const Ordered ordered =
      Order({Event(5, kNow + 9), Event(3, kNow + 5), Event(4, kNow), Event(2, kNow)});
  CHECK(ordered.records == Records{2, 4, 3, 5});
  CHECK(ordered.corrections == ClockCorrections{0, 0});
  CHECK(Order({}).records.empty());
}

TEST_CASE("duplicates of an event are removed, unless they have no number") {
  CHECK(Order({Event(2, kNow), Event(1, kNow), Event(2, kNow)}).records == Records{1, 2});
  CHECK(Order({Event(0, kNow + 1), Event(0, kNow)}).times == Times{kNow, kNow + 1});
}

TEST_CASE("events since the start move by as much as the clock is set") {
  const int64_t wrong = 100 * kDay;
  const Ordered ordered =
      Order({Event(1, kNow - kHourSeconds, LogEventKind::Stopped),
             Event(2, wrong + 9, LogEventKind::LogStarted), Event(3, wrong, LogEventKind::Started),
             Event(4, wrong + 60), ClockSet(5, wrong + 100, kNow), Event(6, kNow + 60)});
  CHECK(ordered.records == Records{1, 3, 2, 4, 5, 6});
  CHECK(ordered.times ==
        Times{kNow - kHourSeconds, kNow - 100, kNow - 91, kNow - 40, kNow, kNow + 60});
  CHECK(ordered.corrections == ClockCorrections{3, 0});
}

TEST_CASE("a clock that is set back moves earlier events") {
  const Ordered ordered = Order({Event(1, kNow, LogEventKind::Woke), Event(2, kNow + 60),
                                 ClockSet(3, kNow + 100, kNow + 100 - kHourSeconds),
                                 Event(4, kNow + 200 - kHourSeconds)});
  CHECK(ordered.times == Times{kNow - kHourSeconds, kNow + 60 - kHourSeconds,
                               kNow + 100 - kHourSeconds, kNow + 200 - kHourSeconds});
  CHECK(ordered.corrections == ClockCorrections{2, 0});
}

TEST_CASE("a clock that is set there and back leaves earlier events where they were") {
  const Ordered ordered = Order({Event(1, kNow, LogEventKind::Started), Event(2, kNow + 60),
                                 ClockSet(3, kNow + 100, kNow + 100 + kHourSeconds),
                                 Event(4, kNow + 200 + kHourSeconds),
                                 ClockSet(5, kNow + 300 + kHourSeconds, kNow + 300)});
  CHECK(ordered.times == Times{kNow, kNow + 60, kNow + 100, kNow + 200, kNow + 300});
  CHECK(ordered.corrections == ClockCorrections{2, 0});
}

TEST_CASE("a clock that is set twice while the system starts moves all of the start") {
  const int64_t wrong = 100 * kDay;
  const Ordered ordered =
      Order({Event(1, wrong, LogEventKind::Started), ClockSet(2, wrong + 5, kNow - kHourSeconds),
             Event(3, kNow - kHourSeconds + 5, LogEventKind::LogStarted),
             ClockSet(4, kNow - kHourSeconds + 60, kNow)});
  CHECK(ordered.times == Times{kNow - 65, kNow - 60, kNow - 55, kNow});
}

TEST_CASE("a wake that was stamped before the clock had caught up moves behind the sleep") {
  LogEvent known = Event(4, kNow + 8 * kHourSeconds + 3, LogEventKind::Woke);
  known.wakeTime = kNow + 8 * kHourSeconds;
  const LogEvent asleep = Event(1, kNow, LogEventKind::Slept);
  const LogEvent woke = Event(2, kNow + 2, LogEventKind::Woke);
  const LogEvent caughtUp = ClockSet(3, kNow + 3, kNow + 8 * kHourSeconds + 1);
  const Times expected = {kNow, kNow + 8 * kHourSeconds, kNow + 8 * kHourSeconds + 1,
                          kNow + 8 * kHourSeconds + 3};
  CHECK(Order({asleep, woke, caughtUp, known}).times == expected);
  // The order in which the log took them does not matter.
  std::vector<LogEvent> late = {asleep, woke, known, caughtUp};
  late[2].record = 3;
  late[3].record = 4;
  CHECK(Order(late).times == expected);
  PutInOrder(late);
  CHECK(late.back().wakeTime == kNow + 8 * kHourSeconds);
}

TEST_CASE("a wake's own time moves with it") {
  LogEvent woke = Event(2, kNow + 10, LogEventKind::Woke);
  woke.sleepTime = kNow - kHourSeconds;
  woke.wakeTime = kNow;
  std::vector<LogEvent> events = {Event(1, kNow - kHourSeconds, LogEventKind::Slept), woke,
                                  ClockSet(3, kNow + 60, kNow + 60 + 2 * kHourSeconds)};
  PutInOrder(events);
  CHECK(events[1].time == kNow + 10 + 2 * kHourSeconds);
  CHECK(events[1].wakeTime == kNow + 2 * kHourSeconds);
  CHECK(events[1].sleepTime == kNow - kHourSeconds);
}

TEST_CASE("a clock that is set while the machine wakes moves nothing from before the sleep") {
  const Ordered ordered = Order({Event(1, kNow, LogEventKind::Started), Event(2, kNow + 60),
                                 Event(3, kNow + 100, LogEventKind::Slept),
                                 ClockSet(4, kNow + 101, kNow + kHourSeconds),
                                 Event(5, kNow + kHourSeconds, LogEventKind::Woke)});
  CHECK(ordered.times ==
        Times{kNow, kNow + 60, kNow + 100, kNow + kHourSeconds, kNow + kHourSeconds});
  CHECK(ordered.corrections == ClockCorrections{0, 0});
}

TEST_CASE("a clock moves nothing from before an unclean start") {
  const Ordered ordered =
      Order({Event(1, kNow - kHourSeconds), Event(2, kNow, LogEventKind::UncleanStart),
             Event(3, kNow, LogEventKind::Started), ClockSet(4, kNow + 400, kNow + 300)});
  CHECK(ordered.times == Times{kNow - kHourSeconds, kNow - 100, kNow - 100, kNow + 300});
}

TEST_CASE("a setting that does not say how the clock was set moves nothing") {
  LogEvent set = ClockSet(2, kNow + 60, kNow + kHourSeconds);
  set.oldTime.reset();
  CHECK(Order({Event(1, kNow, LogEventKind::Started), set}).times ==
        Times{kNow, kNow + kHourSeconds});
}

TEST_CASE("events of a wrong clock that nobody set are left out") {
  const Ordered past = Order({Event(1, kNow), Event(2, 100 * kDay), Event(3, kNow - kHourSeconds),
                              Event(4, kNow - kHourSeconds - 1), Event(5, kNow + 1)});
  CHECK(past.records == Records{3, 1, 5});
  CHECK(past.corrections == ClockCorrections{0, 2});
  const Ordered future =
      Order({Event(1, kNow), Event(2, kNow + kHourSeconds + 2), Event(3, kNow + 1)});
  CHECK(future.records == Records{1, 3});
  CHECK(future.corrections == ClockCorrections{0, 1});
}

TEST_CASE("events that no calendar has are left out") {
  CHECK(Order({Event(1, 0), Event(2, kDay - 1), Event(3, kDay)}).records == Records{3});
  CHECK(Order({Event(1, 32535215999)}).records.empty());
}

}  // namespace dozewell
