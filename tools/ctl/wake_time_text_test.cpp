#include "ctl/wake_time_text.h"

#include <doctest/doctest.h>

#include "common/local_time.h"

namespace dozewell::ctl {
namespace {

std::optional<WakeTime> WakeTimeAt(const char* time) {
  return ToWakeTime(ParseLooseLocalTime(time).value());
}

}  // namespace

TEST_CASE("a wake time has months from 1 and years from 2000") {
  CHECK(WakeTimeAt("2026-11-21 06:30") == WakeTime{30, 6, 21, 11, 26});
  CHECK(WakeTimeAt("2000-01-01 00:00") == WakeTime{0, 0, 1, 1, 0});
  CHECK(WakeTimeAt("2127-12-31 23:59") == WakeTime{59, 23, 31, 12, 127});
  CHECK(WakeTimeAt("2028-02-29 00:00") == WakeTime{0, 0, 29, 2, 28});
}

TEST_CASE("a time outside 2000 to 2127 is no wake time") {
  CHECK(WakeTimeAt("1999-12-31 23:59") == std::nullopt);
  CHECK(WakeTimeAt("2128-01-01 00:00") == std::nullopt);
}

TEST_CASE("a wake time is shown as it is given") {
  for (const char* text : {"2026-11-21 06:30", "2000-01-01 00:00", "2127-12-31 23:59"}) {
    CHECK(CalendarText(*WakeTimeAt(text)) == text);
  }
  CHECK(WakeTimeText({30, 6, 21, 11, 26}) == "2026-11-21 06:30");
}

TEST_CASE("fields that are no time of the calendar are shown one by one") {
  CHECK(CalendarText({}) == std::nullopt);
  CHECK(CalendarText({0, 0, 31, 4, 26}) == std::nullopt);
  CHECK(CalendarText({60, 0, 1, 1, 26}) == std::nullopt);
  CHECK(CalendarText({0, 24, 1, 1, 26}) == std::nullopt);
  CHECK(CalendarText({0, 0, 0, 1, 26}) == std::nullopt);
  CHECK(CalendarText({0, 0, 1, 0, 26}) == std::nullopt);
  CHECK(CalendarText({0, 0, 1, 13, 26}) == std::nullopt);
  CHECK(WakeTimeText({}) == "no time is set");
  CHECK(WakeTimeText({63, 31, 31, 15, 127}) ==
        "no time of the calendar (year 127, month 15, day 31, hour 31, minute 63)");
}

}  // namespace dozewell::ctl
