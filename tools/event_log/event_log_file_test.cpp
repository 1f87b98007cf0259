#include "event_log/event_log_file.h"

#include <doctest/doctest.h>

#include "event_log/event_log_error.h"

namespace dozewell {
namespace {

constexpr int64_t kTime = 1795248309;  // 2026-11-21 08:05:09

// An event as the log renders it.
std::string Event(const std::string& provider, int id, const std::string& data) {
  return "<Event xmlns='http://schemas.microsoft.com/win/2004/08/events/event'><System>"
         "<Provider Name='" +
         provider + "' Guid='{x}'/><EventID Qualifiers='0'>" + std::to_string(id) +
         "</EventID><TimeCreated SystemTime='2026-11-21T08:05:09.1234567Z'/>"
         "<EventRecordID>4711</EventRecordID></System><EventData>" +
         data + "</EventData></Event>";
}

std::string Data(const std::string& name, const std::string& value) {
  return "<Data Name='" + name + "'>" + value + "</Data>";
}

LogEvent Parse(const std::string& xml) {
  const auto events = ParseEventLog(xml, "log");
  REQUIRE(events.size() == 1);
  return events.front();
}

LogEvent Wake(const std::string& data) {
  return Parse(Event("Microsoft-Windows-Power-Troubleshooter", 1, data));
}

void Refused(const std::string& xml, const char* message) {
  CHECK_THROWS_WITH_AS(ParseEventLog(xml, "log"), message, EventLogError);
}

}  // namespace

TEST_CASE("events are known by provider and number") {
  struct Known {
    const char* provider;
    int id;
    LogEventKind kind;
  };
  constexpr const char* kPower = "Microsoft-Windows-Kernel-Power";
  constexpr const char* kGeneral = "Microsoft-Windows-Kernel-General";
  for (const Known& known : {Known{kPower, 42, LogEventKind::Slept},
                             {kPower, 107, LogEventKind::Woke},
                             {kPower, 109, LogEventKind::Stopped},
                             {kPower, 506, LogEventKind::Slept},
                             {kPower, 507, LogEventKind::Woke},
                             {kPower, 41, LogEventKind::Other},
                             {kPower, 1, LogEventKind::Other},
                             {kGeneral, 1, LogEventKind::ClockSet},
                             {kGeneral, 12, LogEventKind::Started},
                             {kGeneral, 13, LogEventKind::Stopped},
                             {kGeneral, 42, LogEventKind::Other},
                             {"Microsoft-Windows-Power-Troubleshooter", 1, LogEventKind::Woke},
                             {"EventLog", 6005, LogEventKind::LogStarted},
                             {"EventLog", 6006, LogEventKind::Stopped},
                             {"EventLog", 6008, LogEventKind::UncleanStart},
                             {"EventLog", 6009, LogEventKind::Other},
                             {"Somebody", 12, LogEventKind::Other}}) {
    CAPTURE(known.provider);
    CAPTURE(known.id);
    LogEvent expected;
    expected.record = 4711;
    expected.time = kTime;
    expected.kind = known.kind;
    CHECK(Parse(Event(known.provider, known.id, "")) == expected);
  }
}

TEST_CASE("a wake has its times and its cause") {
  const LogEvent wake =
      Wake(Data("SleepTime", "2026-11-21T08:00:00.000000000Z") +
           Data("WakeTime", "2026-11-21T08:05:00Z") + Data("WakeSourceType", "1"));
  CHECK(wake.sleepTime == kTime - 309);
  CHECK(wake.wakeTime == kTime - 9);
  CHECK(wake.cause == WakeCause::Device);
  CHECK(Wake(Data("WakeSourceType", "5")).cause == WakeCause::Device);
  CHECK(Wake(Data("WakeSourceType", "0")).cause == WakeCause::Unknown);
  CHECK(Wake("").cause == WakeCause::Unknown);
  CHECK(Wake(Data("WakeSourceType", "5") + Data("WakeTimerOwner", "svchost.exe")).cause ==
        WakeCause::Timer);
  CHECK(Wake(Data("WakeTimerContext", "a task")).cause == WakeCause::Timer);
  CHECK(Wake(Data("WakeTimerOwner", "")).cause == WakeCause::Unknown);
  CHECK_FALSE(Wake(Data("WakeTime", "08:05")).wakeTime);
  CHECK_FALSE(Wake(Data("WakeTime", "2026-11-21T08:05:00")).wakeTime);
}

TEST_CASE("an unclean start has the last time that the machine was alive, in UTC") {
  const auto aliveTime = [](const std::string& binary) {
    return Parse(Event("EventLog", 6008,
                       "<Data>10:05:09</Data><Data>x</Data><Binary>" + binary + "</Binary>"))
        .aliveTime;
  };
  const std::string local = "EA070B0006001500090005000900EC01";
  const std::string utc = "EA070B0006001500080005000900EC01";
  CHECK(aliveTime(local + utc) == kTime);
  CHECK(aliveTime(local + utc + "600900003C000000") == kTime);
  CHECK_FALSE(aliveTime(local + utc.substr(0, 31)));
  CHECK_FALSE(aliveTime(local + "zz070B0006001500080005000900EC01"));
  CHECK_FALSE(aliveTime(local + std::string(32, '0')));
  CHECK_FALSE(aliveTime(""));
}

TEST_CASE("a setting of the clock has what the clock showed") {
  const LogEvent set = Parse(Event("Microsoft-Windows-Kernel-General", 1,
                                   Data("NewTime", "2026-11-21T08:05:09.000000000Z") +
                                       Data("OldTime", "2026-11-21T07:05:09.5Z")));
  CHECK(set.newTime == kTime);
  CHECK(set.oldTime == kTime - 3600);
}

TEST_CASE("an export may have a root and an XML declaration") {
  const std::string event = Event("EventLog", 6005, "");
  CHECK(ParseEventLog(event + event, "log").size() == 2);
  CHECK(
      ParseEventLog(
          "<?xml version='1.0'?>\r\n<Events>\r\n" + event + "\r\n" + event + "</Events>\r\n", "log")
          .size() == 2);
  CHECK(ParseEventLog("", "log").empty());
  CHECK(ParseEventLog("<Events/>", "log").empty());
}

TEST_CASE("only an event's own elements count") {
  const LogEvent event = Parse(
      "<Event><System><Provider Name='EventLog'/><EventID>6005</EventID>"
      "<TimeCreated SystemTime='2026-11-21T08:05:09Z'/><x><EventID>1</EventID></x></System>"
      "<UserData><EventID>2</EventID></UserData>"
      "<RenderingInfo><Provider Name='x'/><EventID>3</EventID></RenderingInfo></Event>");
  CHECK(event.kind == LogEventKind::LogStarted);
  CHECK(event.record == 0);
}

TEST_CASE("a file that is no export of an event log is refused with the line") {
  Refused("<Event>\n<System/>\n</Event>",
          "log: line 3: the event that ends here has no time that could be read");
  Refused("<Event><System><TimeCreated SystemTime='2026-02-30T00:00:00Z'/></System></Event>",
          "log: line 1: the event that ends here has no time that could be read");
  Refused("<Events>\n<Channel/></Events>", "log: line 2: <Channel> where an <Event> should be");
  Refused("<Events>\nevent</Events>", "log: line 2: text where an event should be");
  Refused("<Event>\n<System>", "log: line 2: <System> has no end");
  Refused(std::string("ElfFile\0\0", 9),
          "log: an event log itself, no export of one; wevtutil qe log /lf:true /f:xml exports it");
}

}  // namespace dozewell
