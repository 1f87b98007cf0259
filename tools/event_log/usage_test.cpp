#include "event_log/usage.h"

#include <doctest/doctest.h>

namespace dozewell {
namespace {

constexpr int64_t kMinute = 60;
constexpr int64_t kHour = 3600;

LogEvent At(int64_t time, LogEventKind kind) {
  LogEvent event;
  event.time = time;
  event.kind = kind;
  return event;
}
LogEvent Seen(int64_t time) { return At(time, LogEventKind::Other); }
LogEvent Started(int64_t time) { return At(time, LogEventKind::Started); }
LogEvent LogStarted(int64_t time) { return At(time, LogEventKind::LogStarted); }
LogEvent Stopped(int64_t time) { return At(time, LogEventKind::Stopped); }
LogEvent Slept(int64_t time) { return At(time, LogEventKind::Slept); }
LogEvent Woke(int64_t time) { return At(time, LogEventKind::Woke); }

// What the log says of a wake a few seconds after it.
LogEvent Explained(int64_t sleepTime, int64_t wakeTime, WakeCause cause) {
  LogEvent event = Woke(wakeTime + 4);
  event.sleepTime = sleepTime;
  event.wakeTime = wakeTime;
  event.cause = cause;
  return event;
}

LogEvent UncleanStart(int64_t time, int64_t aliveTime) {
  LogEvent event = At(time, LogEventKind::UncleanStart);
  event.aliveTime = aliveTime;
  return event;
}

using Marks = std::vector<UsageMark>;

UsageMark InUse(int64_t time) { return {time, false}; }
UsageMark Asleep(int64_t time) { return {time, true}; }

Marks MarksOf(const std::vector<LogEvent>& events) { return FindUsage(events).marks; }

}  // namespace

TEST_CASE("use lasts from start or wake to sleep or shutdown") {
  CHECK(MarksOf({Started(100), LogStarted(110), Seen(200), Slept(300), Woke(1000), Stopped(2000),
                 Stopped(2005), LogStarted(3000), Slept(4000)}) ==
        Marks{InUse(100), Asleep(300), InUse(1000), Asleep(2000), InUse(3000), Asleep(4000)});
  CHECK(MarksOf({}).empty());
  CHECK(MarksOf({Seen(100), Seen(200)}).empty());
}

TEST_CASE("the first event that begins or ends use begins the history") {
  CHECK(MarksOf({Seen(100), Slept(200)}) == Marks{Asleep(200)});
  CHECK(MarksOf({Seen(100), Woke(200), Slept(900)}) == Marks{InUse(200), Asleep(900)});
}

TEST_CASE("states that repeat count from their first event") {
  CHECK(MarksOf({Slept(100), Slept(200), Stopped(300), Woke(400), Woke(500), LogStarted(600),
                 Slept(900)}) == Marks{Asleep(100), InUse(400), Asleep(900)});
}

TEST_CASE("use ends with the log when nothing else ends it") {
  CHECK(MarksOf({Started(100), Seen(500)}) == Marks{InUse(100), Asleep(500)});
  CHECK(MarksOf({Started(100)}) == Marks{InUse(100), Asleep(100)});
}

TEST_CASE("use without an end ends with the last event before the next start") {
  const Usage usage = FindUsage(std::vector{Started(100), Seen(700), Started(1000), Slept(1500)});
  CHECK(usage.marks == Marks{InUse(100), Asleep(700), InUse(1000), Asleep(1500)});
  CHECK(usage.unexpectedEnds == 1);
}

TEST_CASE("an unclean start tells when the machine was last alive") {
  const auto endOfUse = [](int64_t aliveTime) {
    const Usage usage = FindUsage(std::vector{Started(100), Seen(700), Started(1000),
                                              UncleanStart(1011, aliveTime), LogStarted(1011)});
    CHECK(usage.unexpectedEnds == 1);
    CHECK(usage.marks.size() == 4);
    return usage.marks[1].time;
  };
  CHECK(endOfUse(900) == 900);
  CHECK(endOfUse(700) == 700);
  CHECK(endOfUse(600) == 700);
  CHECK(endOfUse(1000) == 700);
  CHECK(endOfUse(1005) == 700);
  LogEvent silent = UncleanStart(1011, 0);
  silent.aliveTime.reset();
  CHECK(MarksOf({Started(100), Seen(700), Started(1000), silent})[1] == Asleep(700));
}

TEST_CASE("power that is lost while the machine sleeps ends nothing") {
  const Usage usage = FindUsage(
      std::vector{Started(100), Slept(700), Started(1000), UncleanStart(1011, 800), Seen(1200)});
  CHECK(usage.marks == Marks{InUse(100), Asleep(700), InUse(1000), Asleep(1200)});
  CHECK(usage.unexpectedEnds == 0);
  CHECK(MarksOf({UncleanStart(100, 50)}).empty());
}

TEST_CASE("a wake has the time that the log gives it afterwards") {
  const auto wake = Explained(7200, 50000, WakeCause::Device);
  const Marks expected = {InUse(100), Asleep(7200), InUse(50000), Asleep(60000)};
  CHECK(MarksOf({Started(100), Slept(7200), Woke(50000), wake, Slept(60000)}) == expected);
  CHECK(MarksOf({Started(100), Slept(7200), Woke(7202), wake, Slept(60000)}) == expected);
  CHECK(MarksOf({Started(100), Slept(7200), wake, Slept(60000)}) == expected);
  // A second event with an earlier time changes nothing.
  CHECK(MarksOf({Started(100), Slept(7200), Woke(50002), wake, Slept(60000)})[2] == InUse(50002));
}

TEST_CASE("a wake is never later than its event") {
  LogEvent wake = Explained(7200, 50000, WakeCause::Device);
  wake.time = 49000;
  CHECK(MarksOf({Started(100), Slept(7200), wake, Slept(60000)})[2] == InUse(49000));
  CHECK(MarksOf({Started(100), Slept(7200), Woke(48000), wake, Slept(60000)})[2] == InUse(49000));
}

TEST_CASE("a wake that is logged after the next sleep does not count") {
  CHECK(MarksOf({Started(100), Slept(7200), Woke(50000), Slept(50300),
                 Explained(7200, 50297, WakeCause::Timer), Woke(80000), Slept(90000)}) ==
        Marks{InUse(100), Asleep(7200), InUse(50000), Asleep(50300), InUse(80000), Asleep(90000)});
  // Nor does a wake from a sleep that the log does not have.
  CHECK(MarksOf({Started(100), Explained(5000, 6000, WakeCause::Device), Slept(7000)}) ==
        Marks{InUse(100), Asleep(7000)});
}

TEST_CASE("a wake by a timer counts from a quarter of an hour on") {
  const auto usage = [](WakeCause cause, int64_t seconds) {
    return FindUsage(std::vector{Started(100), Slept(kHour), Woke(9 * kHour),
                                 Explained(kHour, 9 * kHour, cause), Slept(9 * kHour + seconds),
                                 Woke(20 * kHour), Slept(22 * kHour)});
  };
  const Marks with = {InUse(100), Asleep(kHour),     InUse(9 * kHour),
                      Asleep(0),  InUse(20 * kHour), Asleep(22 * kHour)};
  const Marks without = {InUse(100), Asleep(kHour), InUse(20 * kHour), Asleep(22 * kHour)};
  struct Case {
    WakeCause cause;
    int64_t seconds;
    bool counts;
  };
  for (const Case& wake : {Case{WakeCause::Timer, 15 * kMinute, true},
                           {WakeCause::Timer, 15 * kMinute - 1, false},
                           {WakeCause::Unknown, 2 * kMinute, true},
                           {WakeCause::Unknown, 2 * kMinute - 1, false},
                           {WakeCause::Device, 5, true}}) {
    CAPTURE(static_cast<int>(wake.cause));
    CAPTURE(wake.seconds);
    const Usage found = usage(wake.cause, wake.seconds);
    CHECK(found.wakesLeftOut == (wake.counts ? 0 : 1));
    Marks expected = wake.counts ? with : without;
    if (wake.counts) expected[3].time = 9 * kHour + wake.seconds;
    CHECK(found.marks == expected);
  }
}

TEST_CASE("wakes in a row are left out, the first of the log too") {
  const Usage usage = FindUsage(
      std::vector{Woke(1000), Slept(1060), Woke(5000), Slept(5060), Woke(9000), Slept(9060)});
  CHECK(usage.marks == Marks{Asleep(1060)});
  CHECK(usage.wakesLeftOut == 3);
}

TEST_CASE("a start counts however short, and so does a wake whose end is not in the log") {
  CHECK(MarksOf({Stopped(100), Started(1000), Stopped(1030)}) ==
        Marks{Asleep(100), InUse(1000), Asleep(1030)});
  CHECK(MarksOf({Slept(100), Woke(1000), Seen(1010)}) ==
        Marks{Asleep(100), InUse(1000), Asleep(1010)});
}

}  // namespace dozewell
