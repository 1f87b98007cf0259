#include "import/powerwatch_file.h"

#include <doctest/doctest.h>

#include <string>

#include "common/powerwatch_format.h"
#include "event_log/event_log_error.h"

namespace dozewell {
namespace {

// A line on 2026-11-21, local time an hour ahead of UTC.
std::string Line(const char* controlAndType, const char* utcTime, const char* localTime,
                 const char* tickMs = "1000") {
  return std::string(controlAndType) + ",,2026-11-21T" + localTime + ".250,2026-11-21T" + utcTime +
         ".250Z," + tickMs + ",,,,\r\n";
}

std::string File(const std::string& lines) {
  return std::string(kPowerwatchHeader) + "\r\n" + lines;
}

// What the file makes of the machine's day: "08:00:00 in use", and so on.
std::string HistoryOf(const std::string& lines) {
  PowerwatchLog log = ParsePowerwatch(File(lines), "w.csv");
  std::string text;
  for (const HistoryRecord& record : HistoryFromEvents(log.events, log.clock).records) {
    const auto time = static_cast<int64_t>(record.time) % 86400;
    const auto twoDigits = [](int64_t number) {
      return (number < 10 ? "0" : "") + std::to_string(number);
    };
    text += twoDigits(time / 3600) + ":" + twoDigits(time / 60 % 60) + ":" + twoDigits(time % 60) +
            (record.asleep != 0 ? " asleep\n" : " in use\n");
  }
  return text;
}

std::string ErrorOf(const std::string& file) {
  try {
    ParsePowerwatch(file, "w.csv");
  } catch (const EventLogError& error) {
    return error.what();
  }
  return "";
}

const std::string kBegin = Line("0,0", "07:00:00", "08:00:00");
const std::string kSuspend = Line("13,4", "17:00:00", "18:00:00");

}  // namespace

TEST_CASE("a watch's file is told by its first line") {
  CHECK(IsPowerwatch(kPowerwatchHeader));
  CHECK(IsPowerwatch(File("")));
  CHECK(IsPowerwatch(std::string(kPowerwatchHeader) + "\nx"));
  CHECK_FALSE(IsPowerwatch(""));
  CHECK_FALSE(IsPowerwatch("<Event>"));
  CHECK_FALSE(IsPowerwatch(std::string(kPowerwatchHeader) + ",more\r\n"));
}

TEST_CASE("a watched day with a user who comes back is in use, asleep, in use") {
  CHECK(HistoryOf(kBegin + kSuspend + Line("13,18", "19:00:00", "20:00:00") +
                  Line("13,7", "19:00:01", "20:00:01") + Line("13,4", "19:01:00", "20:01:00")) ==
        "08:00:00 in use\n18:00:00 asleep\n20:00:01 in use\n20:01:00 asleep\n");
}

TEST_CASE("a watched wake with nobody there is no use, unless the machine stays on") {
  CHECK(HistoryOf(kBegin + kSuspend + Line("13,18", "19:00:00", "20:00:00") +
                  Line("13,4", "19:14:00", "20:14:00")) == "08:00:00 in use\n18:00:00 asleep\n");
  CHECK(HistoryOf(kBegin + kSuspend + Line("13,18", "19:00:00", "20:00:00") +
                  Line("13,4", "19:16:00", "20:16:00")) ==
        "08:00:00 in use\n18:00:00 asleep\n20:00:00 in use\n20:16:00 asleep\n");
}

TEST_CASE("a user who comes long after the wake is there from then on") {
  CHECK(HistoryOf(kBegin + kSuspend + Line("13,18", "19:00:00", "20:00:00") +
                  Line("13,7", "20:30:00", "21:30:00") + Line("13,4", "20:31:00", "21:31:00")) ==
        "08:00:00 in use\n18:00:00 asleep\n21:30:00 in use\n21:31:00 asleep\n");
}

TEST_CASE("irregular resumes of a watched night end the sleep once") {
  const std::string suspends = kBegin + kSuspend + Line("13,4", "17:00:05", "18:00:05");
  const std::string expected =
      "08:00:00 in use\n18:00:00 asleep\n20:00:00 in use\n22:00:00 asleep\n";
  const std::string end = Line("5,0", "21:00:00", "22:00:00");
  const std::string user = Line("13,7", "19:00:00", "20:00:00");
  const std::string automatic = Line("13,18", "19:00:00", "20:00:00");
  CHECK(HistoryOf(suspends + user + end) == expected);
  CHECK(HistoryOf(suspends + user + automatic + end) == expected);
  CHECK(HistoryOf(suspends + automatic + user + end) == expected);
  CHECK(HistoryOf(kBegin + automatic + user + end) == "08:00:00 in use\n22:00:00 asleep\n");
}

TEST_CASE("pauses, sessions, idle times, changes of the power status and of controls of no name") {
  std::string lines = kBegin;
  for (const char* control : {"2,0", "3,0", "4,0", "14,5", "13,10", "13,32787", "200,1"}) {
    lines += Line(control, "08:00:00", "09:00:00");
  }
  CHECK(HistoryOf(lines + kSuspend) == "08:00:00 in use\n18:00:00 asleep\n");
}

TEST_CASE("a watch that begins again goes on, unless the machine was started in between") {
  const std::string stopped = kBegin + Line("1,0", "08:00:00", "09:00:00") + "\r\n";
  CHECK(HistoryOf(stopped + Line("0,0", "10:00:00", "11:00:00", "2000") + kSuspend) ==
        "08:00:00 in use\n18:00:00 asleep\n");
  CHECK(HistoryOf(stopped + Line("0,0", "10:00:00", "11:00:00", "999") + kSuspend) ==
        "08:00:00 in use\n09:00:00 asleep\n11:00:00 in use\n18:00:00 asleep\n");
}

TEST_CASE("a watched history has the local time of each line, through a change of the zone") {
  CHECK(HistoryOf(kBegin + Line("13,4", "17:00:00", "12:00:00") +
                  Line("13,7", "19:00:00", "14:00:00") + Line("5,0", "20:00:00", "15:00:00")) ==
        "08:00:00 in use\n12:00:00 asleep\n14:00:00 in use\n15:00:00 asleep\n");
}

TEST_CASE("a line that the watch does not write is named with what is wrong in it") {
  const std::string good = "13,4,,2026-11-21T18:00:00.000,2026-11-21T17:00:00.000Z,1,,,,";
  struct Row {
    const char* line;
    const char* error;
  };
  const Row rows[] = {
      {"13,4", "not 10 columns with commas between"},
      {"13,4,,2026-11-21T18:00:00.000,2026-11-21T17:00:00.000Z,1,,,,,",
       "not 10 columns with commas between"},
      {"x,4,,2026-11-21T18:00:00.000,2026-11-21T17:00:00.000Z,1,,,,", "control is no number: x"},
      {"-1,4,,2026-11-21T18:00:00.000,2026-11-21T17:00:00.000Z,1,,,,", "control is no number: -1"},
      {"13,,,2026-11-21T18:00:00.000,2026-11-21T17:00:00.000Z,1,,,,", "type is no number: "},
      {"13,4,,2026-11-21T18:00:00,2026-11-21T17:00:00.000Z,1,,,,",
       "local_time is no time: 2026-11-21T18:00:00"},
      {"13,4,,2026-02-30T18:00:00.000,2026-11-21T17:00:00.000Z,1,,,,",
       "local_time is no time: 2026-02-30T18:00:00.000"},
      {"13,4,,2026-11-21T18:00:00.000,2026-11-21T17:00:00.000,1,,,,",
       "utc_time is no time in UTC: 2026-11-21T17:00:00.000"},
      {"13,4,,2026-11-21T18:00:00.000,2026-11-23T17:00:00.000Z,1,,,,",
       "local_time is more than a day from utc_time: 2026-11-21T18:00:00.000"},
      {"13,4,,2026-11-21T18:00:00.000,2026-11-21T17:00:00.000Z,,,,,", "tick_ms is no number: "},
      {"13,4,,2026-11-21T18:00:00.000,2026-11-21T17:00:00.000Z,1,,,x,",
       "a counter is neither a number nor empty: x"},
  };
  CHECK(ErrorOf(File(good)) == "");
  CHECK(ErrorOf(File(good + "\n")) == "");
  for (const Row& row : rows) {
    CHECK(ErrorOf(File(good + "\r\n" + row.line + "\r\n")) ==
          std::string("w.csv: line 3: ") + row.error);
  }
  CHECK(ErrorOf("hello") == "w.csv: line 1: not the columns of the watch");
}

}  // namespace dozewell
