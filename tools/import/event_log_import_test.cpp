#include "import/event_log_import.h"

#include <doctest/doctest.h>

#include <limits>

#include "event_log/event_log_error.h"

namespace dozewell {
namespace {

constexpr int64_t kDay = 86400;

using Records = std::vector<HistoryRecord>;

// Records that begin in use or asleep and alternate.
Records Alternating(uint32_t asleep, std::initializer_list<double> times) {
  Records records;
  for (const double time : times) {
    records.push_back({time, asleep, 0});
    asleep = 1 - asleep;
  }
  return records;
}

void CheckRecords(const Records& got, const Records& expected) {
  REQUIRE(got.size() == expected.size());
  for (size_t i = 0; i < got.size(); ++i) {
    CAPTURE(i);
    CHECK(got[i].time == expected[i].time);
    CHECK(got[i].asleep == expected[i].asleep);
    CHECK(got[i].reserved == expected[i].reserved);
  }
}

LogEvent Event(int64_t time, LogEventKind kind) {
  LogEvent event;
  event.time = time;
  event.kind = kind;
  return event;
}

// From 08:00 to 17:00 on 1970-01-03 and 1970-01-04.
std::vector<LogEvent> TwoDays() {
  std::vector<LogEvent> events;
  for (const int64_t day : {2, 3}) {
    events.push_back(Event(day * kDay + 28800, LogEventKind::Started));
    events.push_back(Event(day * kDay + 61200, LogEventKind::Stopped));
  }
  return events;
}

EventLogImport Import(std::vector<LogEvent> events, const std::optional<History>& history) {
  return ImportEvents(
      "log", std::move(events), [](int64_t utcSeconds) { return utcSeconds; }, history);
}

}  // namespace

TEST_CASE("only what is older than a history comes before it") {
  const ExtendedHistory extended =
      PutBefore(Alternating(0, {10, 20, 30, 40}), Alternating(0, {30, 50}));
  CheckRecords(extended.records, Alternating(0, {10, 20, 30, 50}));
  CHECK(extended.added == 2);
}

TEST_CASE("a history whose beginning repeats the state before it loses the repetition") {
  CheckRecords(PutBefore(Alternating(0, {10, 20, 30}), Alternating(0, {35, 50})).records,
               Alternating(0, {10, 20, 30, 50}));
  CheckRecords(PutBefore(Alternating(0, {10, 20}), Alternating(1, {35, 50})).records,
               Alternating(0, {10, 20, 50}));
  CheckRecords(PutBefore(Alternating(1, {10}), {{20, 1, 0}, {25, 7, 0}, {30, 0, 5}}).records,
               {{10, 1, 0}, {30, 0, 5}});
  CheckRecords(PutBefore(Alternating(0, {10}), Alternating(0, {20})).records, Alternating(0, {10}));
}

TEST_CASE("states that repeat further on in a history stay") {
  const Records history = {{30, 0, 0}, {40, 0, 0}, {50, 1, 0}};
  CheckRecords(PutBefore(Alternating(0, {10, 20}), history).records,
               {{10, 0, 0}, {20, 1, 0}, {30, 0, 0}, {40, 0, 0}, {50, 1, 0}});
}

TEST_CASE("a history that goes further back stays as it is") {
  const Records history = {{10, 0, 0}, {20, 0, 0}};
  const ExtendedHistory extended = PutBefore(Alternating(1, {10, 30}), history);
  CheckRecords(extended.records, history);
  CHECK(extended.added == 0);
}

TEST_CASE("without a history all is new") {
  CHECK(PutBefore(Alternating(1, {10, 20}), {}).added == 2);
  CHECK(PutBefore({}, {}).records.empty());
}

TEST_CASE("an import has what the log tells and what there was") {
  const EventLogImport import =
      Import(TwoDays(), ToHistory("h.dat", Alternating(0, {3 * kDay + 30000.0, 4.0 * kDay})));
  CHECK(import.events == 4);
  CheckRecords(import.history.records, Alternating(0, {2 * kDay + 28800.0, 2 * kDay + 61200.0,
                                                       3 * kDay + 28800.0, 4.0 * kDay}));
  CHECK(import.history.added == 3);
  CHECK(AddedText(import) == "3 records, 1970-01-03 08:00 to 1970-01-04 08:00");
  CHECK(FindingsText(import) == "");
  CHECK(ImportText(import, "h.dat") ==
        "h.dat: 4 records; from the event log: 3 records, 1970-01-03 08:00 to 1970-01-04 08:00\n");
  CHECK(JsonLine(ImportJson(import, true)) ==
        "{\"records\":4,\"added\":3,\"from\":\"1970-01-03T08:00:00\","
        "\"to\":\"1970-01-04T08:00:00\",\"events\":4,\"wakesLeftOut\":0,\"unexpectedEnds\":0,"
        "\"eventsCorrected\":0,\"eventsLeftOut\":0,\"learnt\":true}\n");
}

TEST_CASE("the history is read as the service reads it") {
  Records untidy = Alternating(0, {50, 60});
  untidy.push_back({55, 1, 0});
  untidy.insert(untidy.begin(), {std::numeric_limits<double>::quiet_NaN(), 0, 0});
  CheckRecords(Import(TwoDays(), ToHistory("h.dat", untidy)).history.records,
               Alternating(0, {50, 60}));
}

TEST_CASE("an import that adds nothing says so") {
  const EventLogImport import = Import(TwoDays(), ToHistory("h.dat", Alternating(0, {kDay})));
  CHECK(AddedText(import) == "no records");
  CHECK(JsonLine(ImportJson(import, false))
            .starts_with("{\"records\":1,\"added\":0,\"from\":null,\"to\":null,\"events\":4,"));
}

TEST_CASE("a data file was learnt or left") {
  CHECK(LearntText("d.z7", true) == "d.z7: learnt\n");
  CHECK(LearntText("d.z7", false) == "d.z7: left as it is\n");
}

TEST_CASE("what was corrected and left out is told, in one or many") {
  EventLogImport import;
  import.log = {{}, 1, 1, { 1, 1 }};
  CHECK(FindingsText(import) ==
        "1 wake left out: the machine went straight back to sleep\n"
        "1 use ended unexpectedly; its end is when the machine was last known to run\n"
        "1 event moved by as much as the clock was set afterwards\n"
        "1 event left out: the clock was wrong and was never set\n");
  import.log = {{}, 2, 3, { 0, 4 }};
  CHECK(FindingsText(import) ==
        "2 wakes left out: the machine went straight back to sleep\n"
        "3 uses ended unexpectedly; their ends are when the machine was last known to run\n"
        "4 events left out: the clock was wrong and was never set\n");
}

TEST_CASE("a log that tells nothing is refused") {
  CHECK_THROWS_WITH_AS(Import({Event(kDay, LogEventKind::Other)}, std::nullopt),
                       "log: no event of it tells when the machine was in use", EventLogError);
}

}  // namespace dozewell
