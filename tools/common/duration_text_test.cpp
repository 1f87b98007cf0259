#include "common/duration_text.h"

#include <doctest/doctest.h>

namespace dozewell {

TEST_CASE("a duration is a number of minutes or has units from the longest on") {
  CHECK(ParseDuration("0") == 0);
  CHECK(ParseDuration("45") == 45);
  CHECK(ParseDuration("45m") == 45);
  CHECK(ParseDuration("45min") == 45);
  CHECK(ParseDuration("45 min") == 45);
  CHECK(ParseDuration("3h") == 180);
  CHECK(ParseDuration("1h30m") == 90);
  CHECK(ParseDuration("1 h 30 min") == 90);
  CHECK(ParseDuration("2d 3h 5min") == 3065);
  CHECK(ParseDuration("2d5m") == 2885);
  CHECK(ParseDuration("90m") == 90);
  CHECK(ParseDuration("4294967296") == 4294967296);
  CHECK(ParseDuration("4294967296d") == 6184752906240);
}

TEST_CASE("nothing else is a duration") {
  for (const char* text :
       {"", " ", "m", "h3", "-1", "+1", "1.5h", "3x", "30s", "1h1h", "1m1h", "1h 30", "5 5",
        "never", "4294967297", "4294967297h", "99999999999999999999", "1h-5m", " 5"}) {
    CAPTURE(text);
    CHECK(ParseDuration(text) == std::nullopt);
  }
}

TEST_CASE("a timeout is a duration or never") {
  CHECK(ParseTimeout("never") == 0);
  CHECK(ParseTimeout("0") == 0);
  CHECK(ParseTimeout("3h") == 180);
  CHECK(ParseTimeout("Never") == std::nullopt);
  CHECK(TimeoutRange(90) == "never or 1 to 90 minutes, such as 45m or 1h30m");
}

TEST_CASE("a duration is shown with the units that it needs") {
  CHECK(DurationText(0) == "0 min");
  CHECK(DurationText(59) == "59 min");
  CHECK(DurationText(60) == "1 h 00 min");
  CHECK(DurationText(185) == "3 h 05 min");
  CHECK(DurationText(1440) == "1 d 00 h 00 min");
  CHECK(DurationText(1048575) == "728 d 04 h 15 min");
  CHECK(DurationText(4294967295) == "2982616 d 04 h 15 min");
}

TEST_CASE("a duration can be given as it is shown") {
  for (const int64_t minutes : {0, 59, 60, 185, 1440, 1048575}) {
    CHECK(ParseDuration(DurationText(minutes)) == minutes);
  }
}

}  // namespace dozewell
