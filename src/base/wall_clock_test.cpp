#include "base/wall_clock.h"

#include <doctest/doctest.h>

#include <limits>

namespace dozewell {
namespace {

constexpr tm kAllMinusOne = {-1, -1, -1, -1, -1, -1, -1, -1, -1};

tm Fields(int32_t year, int32_t month, int32_t day, int32_t hour, int32_t minute, int32_t second) {
  return {second, minute, hour, day, month - 1, year - 1900, -1, -1, 0};
}

tm TimeAt(int64_t seconds) {
  tm time;
  TmFromSeconds(seconds, time);
  return time;
}

}  // namespace

TEST_CASE("seconds count wall-clock time from 1970 to the year 3000") {
  CHECK(SecondsFromTm(Fields(1970, 1, 1, 0, 0, 0)) == 0);
  CHECK(SecondsFromTm(Fields(2000, 2, 29, 12, 34, 56)) == 951827696);
  CHECK(SecondsFromTm(Fields(2012, 5, 14, 20, 25, 46)) == 1337027146);
  CHECK(SecondsFromTm(Fields(3000, 12, 31, 23, 59, 59)) == kLastSecond);
  CHECK(SecondsFromTm(Fields(3001, 1, 1, 0, 0, 0)) == kInvalidTime);
  CHECK(SecondsFromTm(Fields(1969, 12, 31, 23, 59, 58)) == kInvalidTime);
  CHECK(SecondsFromTm(Fields(1960, 1, 1, 0, 0, 0)) == kInvalidTime);
}

TEST_CASE("fields outside their ranges are carried over") {
  CHECK(SecondsFromTm(Fields(2026, 1, 32, 0, 0, 0)) == SecondsFromTm(Fields(2026, 2, 1, 0, 0, 0)));
  CHECK(SecondsFromTm(Fields(2026, 1, 0, 0, 0, 0)) == SecondsFromTm(Fields(2025, 12, 31, 0, 0, 0)));
  CHECK(SecondsFromTm(Fields(2025, 14, 1, 0, 0, 0)) == SecondsFromTm(Fields(2026, 2, 1, 0, 0, 0)));
  CHECK(SecondsFromTm(Fields(2026, -1, 1, 0, 0, 0)) == SecondsFromTm(Fields(2025, 11, 1, 0, 0, 0)));
  CHECK(SecondsFromTm(Fields(2026, 3, 1, 25, 61, 61)) ==
        SecondsFromTm(Fields(2026, 3, 2, 2, 2, 1)));
  CHECK(SecondsFromTm(Fields(1970, 1, 1, 0, 0, -1)) == kInvalidTime);
}

TEST_CASE("extreme fields are invalid times") {
  constexpr int32_t kMax = std::numeric_limits<int32_t>::max();
  constexpr int32_t kMin = std::numeric_limits<int32_t>::min();
  CHECK(SecondsFromTm({kMax, kMax, kMax, kMax, kMax, kMax, kMax, kMax, kMax}) == kInvalidTime);
  CHECK(SecondsFromTm({kMin, kMin, kMin, kMin, kMin, kMin, kMin, kMin, kMin}) == kInvalidTime);
}

TEST_CASE("seconds convert back to every field") {
  CHECK(TimeAt(0) == tm{0, 0, 0, 1, 0, 70, 4, 0, 0});
  CHECK(TimeAt(951827696) == tm{56, 34, 12, 29, 1, 100, 2, 59, 0});
  CHECK(TimeAt(kLastSecond) == tm{59, 59, 23, 31, 11, 1100, 3, 364, 0});
}

TEST_CASE("seconds out of range leave every field at -1") {
  tm time = {};
  CHECK_FALSE(TmFromSeconds(-1, time));
  CHECK(time == kAllMinusOne);
  time = {};
  CHECK_FALSE(TmFromSeconds(kLastSecond + 1, time));
  CHECK(time == kAllMinusOne);
  time = {};
  CHECK_FALSE(TmFromSeconds(std::numeric_limits<int64_t>::min(), time));
  CHECK(time == kAllMinusOne);
  CHECK(SecondsFromTm(kAllMinusOne) == kInvalidTime);
}

TEST_CASE("both directions agree on every day") {
  tm previous = TimeAt(0);
  for (int64_t day = 1; day <= kLastSecond / 86400; ++day) {
    const tm time = TimeAt(day * 86400 + day % 86400);
    REQUIRE(SecondsFromTm(time) == day * 86400 + day % 86400);
    REQUIRE(time.tm_wday == (previous.tm_wday + 1) % 7);
    REQUIRE(time.tm_yday == (time.tm_mon == 0 && time.tm_mday == 1 ? 0 : previous.tm_yday + 1));
    previous = time;
  }
}

TEST_CASE("adding seconds refuses null, zero and invalid times") {
  CHECK_FALSE(AddSecondsToTime(nullptr, 60));
  tm time = Fields(2026, 2, 28, 23, 59, 30);
  const tm before = time;
  CHECK_FALSE(AddSecondsToTime(&time, 0));
  CHECK(time == before);
  tm invalid = Fields(1960, 1, 1, 0, 0, 0);
  const tm invalidBefore = invalid;
  CHECK_FALSE(AddSecondsToTime(&invalid, 60));
  CHECK(invalid == invalidBefore);
}

TEST_CASE("adding seconds carries over into days and months") {
  tm time = Fields(2026, 2, 28, 23, 59, 30);
  CHECK(AddSecondsToTime(&time, 60));
  CHECK(time == tm{30, 0, 0, 1, 2, 126, 0, 59, 0});
  CHECK(AddSecondsToTime(&time, -60));
  CHECK(time == tm{30, 59, 23, 28, 1, 126, 6, 58, 0});
  tm first = Fields(1970, 1, 1, 0, 0, 30);
  CHECK_FALSE(AddSecondsToTime(&first, -31));
  CHECK(first == kAllMinusOne);
}

TEST_CASE("differences are 32-bit seconds and whole minutes toward zero") {
  const tm noon = Fields(2026, 11, 21, 12, 0, 0);
  const tm later = Fields(2026, 11, 21, 12, 1, 59);
  CHECK(SecondsBetween(noon, later) == 119);
  CHECK(MinutesBetween(noon, later) == 1);
  CHECK(MinutesBetween(later, noon) == -1);
  CHECK(SecondsBetween(TimeAt(0), TimeAt(int64_t{1} << 31)) == std::numeric_limits<int32_t>::min());
}

TEST_CASE("the text of a time pads the day of the month with a blank") {
  CHECK(WallClockText(TimeAt(0)) == L"Thu Jan  1 00:00:00 1970\n");
  CHECK(WallClockText(TimeAt(951827696)) == L"Tue Feb 29 12:34:56 2000\n");
  CHECK(WallClockText(TimeAt(kLastSecond)) == L"Wed Dec 31 23:59:59 3000\n");
  CHECK(WallClockText(kAllMinusOne).empty());
}

}  // namespace dozewell
