#include "common/history_csv.h"

#include <doctest/doctest.h>

#include <bit>
#include <cmath>
#include <cstdint>

#include "common/tool_error.h"

namespace dozewell {
namespace {

std::vector<CsvRecord> Parse(std::string_view text) { return ParseHistoryCsv(text, "h.csv"); }

std::string ParseError(std::string_view text) {
  try {
    Parse(text);
  } catch (const ToolError& error) {
    return error.what();
  }
  return "no error";
}

// The one record of a text.
HistoryRecord ParseOne(std::string_view text) {
  const auto records = Parse(text);
  REQUIRE(records.size() == 1);
  return records[0].record;
}

}  // namespace

TEST_CASE("CSV records keep their order and know their line") {
  const auto records = Parse("epoch_wallclock_seconds,asleep\n20,1\n\n10,0\n");
  REQUIRE(records.size() == 2);
  CHECK(records[0].record.time == 20);
  CHECK(records[0].record.asleep == 1);
  CHECK(records[0].record.reserved == 0);
  CHECK(records[0].line == 2);
  CHECK(records[1].record.time == 10);
  CHECK(records[1].record.asleep == 0);
  CHECK(records[1].line == 4);
}

TEST_CASE("the line with the columns' names is optional and comes first") {
  CHECK(Parse("").empty());
  CHECK(Parse("epoch_wallclock_seconds,asleep").empty());
  CHECK(Parse("\n TIME , Asleep \n").empty());
  CHECK(ParseOne("10,1").time == 10);
  CHECK(ParseError("10,1\nepoch_wallclock_seconds,asleep\n") ==
        "h.csv: line 2: neither seconds nor a local time: epoch_wallclock_seconds");
  CHECK(ParseError("time,state\n") == "h.csv: line 1: neither seconds nor a local time: time");
}

TEST_CASE("CSV may have CR LF, a byte order mark, blank lines and blanks") {
  CHECK(Parse("\xEF\xBB\xBF"
              "epoch_wallclock_seconds,asleep\r\n \t\r\n 10 ,\t1 \r\n20,0\r\n")
            .size() == 2);
}

TEST_CASE("a time may be any finite number that a double holds") {
  CHECK(ParseOne("1337027146.25,1").time == 1337027146.25);
  CHECK(ParseOne("-1e300,1").time == -1e300);
  for (const std::string text : {"nan", "inf", "-inf", "NAN(1)", "infinity", "1e400"}) {
    CHECK(ParseError(text + ",1") == "h.csv: line 1: neither seconds nor a local time: " + text);
  }
}

TEST_CASE("a time may be a local time") {
  CHECK(ParseOne("2012-05-14T20:25:46,1").time == 1337027146);
  CHECK(ParseOne("2012-05-14 20:25:46,1").time == 1337027146);
  CHECK(ParseOne("2012-05-14T20:25,1").time == 1337027100);
}

TEST_CASE("asleep is any number of 32 bits") {
  CHECK(ParseOne("1,4294967295").asleep == 4294967295U);
  CHECK(ParseOne("1,007").asleep == 7);
}

TEST_CASE("a bad CSV line is refused with its number") {
  CHECK(ParseError("1,0\nx,1") == "h.csv: line 2: neither seconds nor a local time: x");
  CHECK(ParseError("2012-02-30T00:00,1") ==
        "h.csv: line 1: neither seconds nor a local time: 2012-02-30T00:00");
  CHECK(ParseError(",1") == "h.csv: line 1: neither seconds nor a local time: ");
  CHECK(ParseError("1e999,1") == "h.csv: line 1: neither seconds nor a local time: 1e999");
  CHECK(ParseError("\n\n10") == "h.csv: line 3: not two columns with a comma between them");
  CHECK(ParseError("10,") == "h.csv: line 1: asleep is not a whole number from 0 to 4294967295: ");
  CHECK(ParseError("10,-1") ==
        "h.csv: line 1: asleep is not a whole number from 0 to 4294967295: -1");
  CHECK(ParseError("10,4294967296") ==
        "h.csv: line 1: asleep is not a whole number from 0 to 4294967295: 4294967296");
  CHECK(ParseError("10,1,2") ==
        "h.csv: line 1: asleep is not a whole number from 0 to 4294967295: 1,2");
  CHECK(ParseError("10;1") == "h.csv: line 1: not two columns with a comma between them");
}

TEST_CASE("a history is written as CSV without its reserved bytes") {
  const HistoryRecord records[] = {{1337027146, 0, 7}, {1337027146.5, 4294967295U, 0}};
  const MachineIdentity identity = {.name = "OFFICE-7", .version = "1"};
  const std::string head =
      "# {\"name\":\"OFFICE-7\",\"version\":\"1\",\"settings\":null,\"zone\":null,\"time\":null}\n"
      "epoch_wallclock_seconds,asleep\n";
  CHECK(FormatHistoryCsv(records, identity) == head + "1337027146,0\n1337027146.5,4294967295\n");
  CHECK(FormatHistoryCsv({}, identity) == head);
  CHECK(FormatHistoryCsv({}, {}) == "epoch_wallclock_seconds,asleep\n");
}

TEST_CASE("comments in CSV are skipped and counted as lines") {
  CHECK(Parse("# one\ntime,asleep\n  # two\n10,1\n")[0].line == 4);
  CHECK(ParseError("#\n10;1") == "h.csv: line 2: not two columns with a comma between them");
}

TEST_CASE("every time comes back from CSV as the double it was") {
  for (double time : {0.0, -0.0, 1337027146.0, 0.1, 1.0 / 3.0, 5e-324, 1.7976931348623157e308,
                      -9223372036854775808.0, 9007199254740993.0}) {
    CAPTURE(time);
    const HistoryRecord record = {time, 1, 0};
    const auto records = Parse(FormatHistoryCsv({&record, 1}, {}));
    REQUIRE(records.size() == 1);
    CHECK(std::bit_cast<uint64_t>(records[0].record.time) == std::bit_cast<uint64_t>(time));
  }
}

}  // namespace dozewell
