#include "event_log/event_log_history.h"

#include <doctest/doctest.h>

#include "common/local_time.h"
#include "event_log/zone_rules.h"

namespace dozewell {
namespace {

LogEvent At(const char* utc, LogEventKind kind) {
  LogEvent event;
  event.time = SecondsFromTm(*ParseLocalTime(utc));
  event.kind = kind;
  return event;
}

// Local times, each with "+" for use and "-" for sleep.
std::vector<std::string> Told(const std::vector<LogEvent>& events, const char* zone) {
  const auto rules = ZoneRules::Parse(zone);
  REQUIRE(rules);
  const auto history = HistoryFromEvents(
      events, [&rules](int64_t utcSeconds) { return rules->WallSeconds(utcSeconds); });
  std::vector<std::string> told;
  for (const HistoryRecord& record : history.records) {
    CHECK(record.reserved == 0);
    told.push_back((record.asleep == 0 ? "+" : "-") +
                   FormatLocalTime(ToTimeLineEvent(record).time));
  }
  return told;
}

using Lines = std::vector<std::string>;
constexpr const char* kCentralEurope = "CET-1CEST,M3.5.0,M10.5.0/3";

}  // namespace

TEST_CASE("a history is in local time, whatever the order of the log") {
  CHECK(Told({At("2026-07-01T20:00:00", LogEventKind::Slept),
              At("2026-07-01T06:00:00", LogEventKind::Started)},
             kCentralEurope) == Lines{"+2026-07-01T08:00:00", "-2026-07-01T22:00:00"});
}

TEST_CASE("local time skips an hour in spring") {
  CHECK(Told({At("2026-03-29T00:30:00", LogEventKind::Started),
              At("2026-03-29T01:10:00", LogEventKind::Slept)},
             kCentralEurope) == Lines{"+2026-03-29T01:30:00", "-2026-03-29T03:10:00"});
}

TEST_CASE("in the hour that comes twice in autumn, records follow each other by a second") {
  CHECK(Told({At("2026-10-24T22:00:00", LogEventKind::Started),
              At("2026-10-25T00:50:00", LogEventKind::Slept),
              At("2026-10-25T01:20:00", LogEventKind::Started),
              At("2026-10-25T01:40:00", LogEventKind::Slept),
              At("2026-10-25T01:51:00", LogEventKind::Started),
              At("2026-10-25T02:00:00", LogEventKind::Slept)},
             kCentralEurope) == Lines{"+2026-10-25T00:00:00", "-2026-10-25T02:50:00",
                                      "+2026-10-25T02:50:01", "-2026-10-25T02:50:02",
                                      "+2026-10-25T02:51:00", "-2026-10-25T03:00:00"});
}

TEST_CASE("a history says what was found in the log") {
  LogEvent timer = At("2026-07-01T01:00:04", LogEventKind::Woke);
  timer.sleepTime = timer.time - 3604;
  timer.wakeTime = timer.time - 4;
  timer.cause = WakeCause::Timer;
  std::vector<LogEvent> events = {At("2026-07-01T00:00:00", LogEventKind::Slept),
                                  timer,
                                  At("2026-07-01T01:05:00", LogEventKind::Slept),
                                  At("2026-07-01T06:00:00", LogEventKind::Started),
                                  At("2009-01-01T00:00:00", LogEventKind::Other),
                                  At("2026-07-01T08:00:00", LogEventKind::Started)};
  for (size_t i = 0; i < events.size(); ++i) events[i].record = i + 1;
  const auto history = HistoryFromEvents(events, [](int64_t utcSeconds) { return utcSeconds; });
  CHECK(history.records.size() == 5);
  CHECK(history.wakesLeftOut == 1);
  CHECK(history.unexpectedEnds == 1);
  CHECK(history.clock == ClockCorrections{0, 1});
}

}  // namespace dozewell
