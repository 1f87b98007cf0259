#include "common/local_time.h"

#include <doctest/doctest.h>

namespace dozewell {

TEST_CASE("a local time is read with all its fields") {
  CHECK(ParseLocalTime("2026-11-21T08:30:59") == tm{59, 30, 8, 21, 10, 126, 6, 324, 0});
  CHECK(ParseLocalTime("2024-02-29T23:59:59") == tm{59, 59, 23, 29, 1, 124, 4, 59, 0});
  CHECK(ParseLocalTime("1970-01-01T00:00:00") == tm{0, 0, 0, 1, 0, 70, 4, 0, 0});
  CHECK(ParseLocalTime("3000-12-31T23:59:59") == tm{59, 59, 23, 31, 11, 1100, 3, 364, 0});
}

TEST_CASE("a time that no calendar has, or of another form, is none") {
  for (const char* text : {"",
                           "soon",
                           "2023-02-29T00:00:00",
                           "2023-13-01T00:00:00",
                           "2023-00-01T00:00:00",
                           "2023-01-00T00:00:00",
                           "2023-04-31T00:00:00",
                           "2023-01-01T24:00:00",
                           "2023-01-01T00:60:00",
                           "2023-01-01T23:59:60",
                           "1969-12-31T23:59:59",
                           "3001-01-01T00:00:00",
                           "2023-1-01T00:00:00",
                           "2023-01-01 00:00:00",
                           "2023-01-01T00:00",
                           "2023-01-01T00:00:00Z",
                           " 2023-01-01T00:00:00",
                           "2023-01-01T0a:00:00",
                           "2023/01/01T00:00:00",
                           "-023-01-01T00:00:00"}) {
    CAPTURE(text);
    CHECK_FALSE(ParseLocalTime(text));
  }
}

TEST_CASE("where it may be loose, a blank stands for the T and seconds are not needed") {
  const auto time = ParseLocalTime("2026-11-21T08:30:00");
  CHECK(ParseLooseLocalTime("2026-11-21T08:30:00") == time);
  CHECK(ParseLooseLocalTime("2026-11-21 08:30:00") == time);
  CHECK(ParseLooseLocalTime("2026-11-21T08:30") == time);
  CHECK(ParseLooseLocalTime("2026-11-21 08:30") == time);
  CHECK_FALSE(ParseLooseLocalTime("2026-11-21"));
  CHECK_FALSE(ParseLooseLocalTime("2026-11-21 08"));
  CHECK_FALSE(ParseLooseLocalTime("2026-11-31 08:30"));
}

TEST_CASE("a time is written field by field") {
  CHECK(FormatLocalTime({1, 2, 3, 4, 4, 105, 0, 0, 0}) == "2005-05-04T03:02:01");
  CHECK(FormatLocalTime({-1, -1, -1, -1, -1, -1, -1, -1, -1}) == "1899-00--1T-1:-1:-1");
}

TEST_CASE("people write a blank between date and time") {
  CHECK(WithBlank("2026-11-21T08:30:00") == "2026-11-21 08:30:00");
  CHECK(WithBlank("2026-11-21T08:30") == "2026-11-21 08:30");
  CHECK(WithBlank("2026-11-21") == "2026-11-21");
}

}  // namespace dozewell
