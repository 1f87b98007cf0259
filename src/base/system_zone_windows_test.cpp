#include <doctest/doctest.h>
#include <time.h>
#include <windows.h>

#include "base/clock.h"
#include "base/system_zone.h"
#include "support/calls.h"
#include "support/system_calls_windows.h"

namespace dozewell {

using namespace support;

namespace {

// As every program that asks the system itself sees it.
SYSTEMTIME SystemLocalTime(int64_t utcSeconds) {
  const int64_t ticks = (utcSeconds + 11644473600) * 10000000;
  const FILETIME time = {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
  SYSTEMTIME utc;
  SYSTEMTIME local;
  FileTimeToSystemTime(&time, &utc);
  SystemTimeToTzSpecificLocalTime(nullptr, &utc, &local);
  return local;
}

}  // namespace

TEST_CASE("local times are those of the system's own conversion") {
  const int64_t now = UtcSecondsNow();
  for (const int64_t seconds : {now, now + 86400 * 91, now + 86400 * 182}) {
    const SYSTEMTIME expected = SystemLocalTime(seconds);
    tm local = {};
    REQUIRE(LocalTimeInSystemZone(seconds, local));
    CHECK(local.tm_year + 1900 == expected.wYear);
    CHECK(local.tm_mon + 1 == expected.wMonth);
    CHECK(local.tm_mday == expected.wDay);
    CHECK(local.tm_hour == expected.wHour);
    CHECK(local.tm_min == expected.wMinute);
    CHECK(local.tm_sec == expected.wSecond);
    CHECK(local.tm_wday == expected.wDayOfWeek);
  }
}

TEST_CASE("every conversion reads the zone first") {
  const ImportStub<"_tzset", void()> readZone;
  tm local = {};
  for (int conversion = 0; conversion < 3; ++conversion) {
    CHECK(LocalTimeInSystemZone(1767618000, local));
    CHECK(TakeSystemCalls() == Calls{SystemCall("_tzset")});
  }
}

TEST_CASE("a moment outside of the calendar has no local time") {
  tm local = {1, 2, 3, 4, 5, 6, 7, 8, 9};
  CHECK_FALSE(LocalTimeInSystemZone(-1, local));
  CHECK(local == tm{1, 2, 3, 4, 5, 6, 7, 8, 9});
  TakeSystemCalls();
}

}  // namespace dozewell
