#include "report/figure_text.h"

#include <doctest/doctest.h>

#include "support/local_times.h"

namespace dozewell::report {

TEST_CASE("times are written for people") {
  const tm time = LocalTime(2024, 2, 29, 7, 5, 59);
  CHECK(DateText(time) == "Thu 29 Feb");
  CHECK(LongDateText(time) == "Thu 29 Feb 2024");
  CHECK(TimeText(time) == "07:05");
  CHECK(DateTimeText(time) == "Thu 29 Feb, 07:05");
  CHECK(DateTimeText(TimeOf(SecondsFromTm(time))) == "Thu 29 Feb, 07:05");
  CHECK(DateText(LocalTime(2023, 12, 3)) == "Sun 3 Dec");
}

TEST_CASE("numbers are written with their words") {
  CHECK(PercentText(0) == "0");
  CHECK(PercentText(0.625) == "63");
  CHECK(PercentText(1) == "100");
  CHECK(TimeoutText(0) == "never hibernating");
  CHECK(TimeoutText(60) == "a fixed timeout of 1 minute");
  CHECK(TimeoutText(10800) == "a fixed timeout of 180 minutes");
}

TEST_CASE("a share in CSS has two decimals, cut off") {
  CHECK(CssPercent(0, 86400) == "0.00%");
  CHECK(CssPercent(28739, 86400) == "33.26%");
  CHECK(CssPercent(86400, 86400) == "100.00%");
  CHECK(CssPercent(1, 2000) == "0.05%");
}

}  // namespace dozewell::report
