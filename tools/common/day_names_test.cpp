#include "common/day_names.h"

#include <doctest/doctest.h>

namespace dozewell {

TEST_CASE("days and months have names") {
  CHECK(DayName(0) == "Sun");
  CHECK(DayName(6) == "Sat");
  CHECK(MonthName(0) == "Jan");
  CHECK(MonthName(11) == "Dec");
}

TEST_CASE("numbers that are no day or month have no name") {
  CHECK(DayName(-1) == "???");
  CHECK(DayName(7) == "???");
  CHECK(MonthName(-1) == "???");
  CHECK(MonthName(12) == "???");
}

TEST_CASE("a cycle of a week begins on a Thursday") {
  CHECK(CycleDayName(0) == "Thu");
  CHECK(CycleDayName(6) == "Wed");
  std::string fromMonday;
  for (int days = 0; days < kDaysInWeek; ++days)
    fromMonday += CycleDayName(CycleDayFromMonday(days));
  CHECK(fromMonday == "MonTueWedThuFriSatSun");
}

}  // namespace dozewell
