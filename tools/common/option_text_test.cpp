#include "common/option_text.h"

#include <doctest/doctest.h>

#include <cstdint>
#include <limits>

namespace dozewell {

TEST_CASE("an option's time has one form") {
  CHECK(ParseTimeOption("--at", "1970-01-02T00:00:00") == tm{0, 0, 0, 2, 0, 70, 5, 1, 0});
  CHECK_THROWS_WITH_AS(ParseTimeOption("--at", "tomorrow"),
                       "--at: not a local time YYYY-MM-DDTHH:MM:SS: tomorrow", ToolError);
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
