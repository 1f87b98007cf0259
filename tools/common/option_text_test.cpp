#include "common/option_text.h"

#include <doctest/doctest.h>

#include <cstdint>
#include <limits>
#include <string>

#include "ctl/fakes/utc_time_fake.h"

namespace dozewell {

TEST_CASE("an option's time is local or in seconds, UTC") {
  fakes::utcOffsetSeconds = 3600;
  const tm time = {0, 0, 1, 2, 0, 70, 5, 1, 0};
  CHECK(ParseTimeOption("--at", "1970-01-02T01:00:00") == time);
  CHECK(ParseTimeOption("--at", "1970-01-02 01:00") == time);
  CHECK(ParseTimeOption("--at", "86400") == time);
  CHECK(ParseUtcOption("--now", "86400") == 86400);
  CHECK(ParseUtcOption("--now", "1970-01-02 01:00") == 86400);
  CHECK(ParseUtcOption("--now", "-9223372036854775808") == std::numeric_limits<int64_t>::min());
  fakes::utcOffsetSeconds = 0;
}

TEST_CASE("any other text is no time") {
  constexpr const char* kWrong =
      "--at: not a local time \"YYYY-MM-DD HH:MM\" or UTC seconds since 1970: ";
  for (const std::string text : {"tomorrow", "2024-02-30 18:00", "99999999999999999999", "1.5"}) {
    CHECK_THROWS_WITH_AS(ParseTimeOption("--at", text), (kWrong + text).c_str(), ToolError);
    CHECK_THROWS_WITH_AS(ParseUtcOption("--at", text), (kWrong + text).c_str(), ToolError);
  }
  CHECK_THROWS_WITH_AS(ParseTimeOption("--at", ""), (kWrong + std::string("\"\"")).c_str(),
                       ToolError);
  // No calendar has a year so late.
  CHECK_THROWS_WITH_AS(ParseTimeOption("--at", "9223372036854775807"),
                       (kWrong + std::string("9223372036854775807")).c_str(), ToolError);
}

TEST_CASE("an option's number lies within bounds") {
  CHECK(ParseNumberOption("--days", "1", 1, 36500) == 1);
  CHECK(ParseNumberOption("--days", "36500", 1, 36500) == 36500);
  CHECK_THROWS_WITH_AS(ParseNumberOption("--days", "0", 1, 36500),
                       "--days: not a whole number from 1 to 36500: 0", ToolError);
  CHECK_THROWS_WITH_AS(ParseNumberOption("--days", "36501", 1, 36500),
                       "--days: not a whole number from 1 to 36500: 36501", ToolError);
  CHECK_THROWS_WITH_AS(ParseNumberOption("--days", "1.5", 1, 36500),
                       "--days: not a whole number from 1 to 36500: 1.5", ToolError);
  constexpr auto kLowest = std::numeric_limits<int64_t>::min();
  constexpr auto kHighest = std::numeric_limits<int64_t>::max();
  CHECK(ParseNumberOption("--now", "-9223372036854775808", kLowest, kHighest) == kLowest);
  CHECK_THROWS_WITH_AS(
      ParseNumberOption("--now", "9223372036854775808", kLowest, kHighest),
      "--now: not a whole number from -9223372036854775808 to 9223372036854775807: "
      "9223372036854775808",
      ToolError);
}

}  // namespace dozewell
