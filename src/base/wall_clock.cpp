#include "base/wall_clock.h"

#include <cwchar>
#include <iterator>

#include "base/numbers.h"

namespace dozewell {
namespace {

// The Gregorian calendar repeats every 400 years. Counting years from March puts the leap day at
// the end of the year, where it disturbs no month's start; the start of month m, from March, is
// then (153 m + 2) / 5 days into the year.
constexpr int64_t kDaysPerEra = 146097;
constexpr int64_t kYearsPerEra = 400;
constexpr int64_t kDaysFromEraToEpoch = 719468;  // 0000-03-01 to 1970-01-01

constexpr int64_t FloorDivide(int64_t a, int64_t b) { return a / b - (a % b < 0 ? 1 : 0); }

// Days from 1970-01-01 to the first of a month; `month` may lie outside 0 to 11.
constexpr int64_t DaysToMonth(int64_t year, int64_t month) {
  const int64_t monthsFromMarch = year * 12 + month - 2;
  const int64_t marchYear = FloorDivide(monthsFromMarch, 12);
  const int64_t marchMonth = monthsFromMarch - marchYear * 12;
  const int64_t era = FloorDivide(marchYear, kYearsPerEra);
  const int64_t yearOfEra = marchYear - era * kYearsPerEra;
  const int64_t dayOfYear = (153 * marchMonth + 2) / 5;
  const int64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
  return era * kDaysPerEra + dayOfEra - kDaysFromEraToEpoch;
}

struct Date {
  int32_t year;
  int32_t month;  // 0 to 11
  int32_t day;    // 1 to 31
};

// The date of a day that is not before 1970-01-01.
constexpr Date DateOfDay(int64_t daysSince1970) {
  const int64_t days = daysSince1970 + kDaysFromEraToEpoch;
  const int64_t era = days / kDaysPerEra;
  const int64_t dayOfEra = days % kDaysPerEra;
  const int64_t yearOfEra =
      (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / (kDaysPerEra - 1)) / 365;
  const int64_t dayOfYear = dayOfEra - (yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100);
  const int64_t marchMonth = (5 * dayOfYear + 2) / 153;
  const int64_t day = dayOfYear - (153 * marchMonth + 2) / 5 + 1;
  const int64_t month = marchMonth < 10 ? marchMonth + 2 : marchMonth - 10;
  const int64_t year = era * kYearsPerEra + yearOfEra + (month < 2 ? 1 : 0);
  return {static_cast<int32_t>(year), static_cast<int32_t>(month), static_cast<int32_t>(day)};
}

constexpr bool InRange(int32_t value, int32_t low, int32_t high) {
  return value >= low && value <= high;
}

}  // namespace

int64_t SecondsFromTm(const tm& time) {
  const int64_t days =
      DaysToMonth(int64_t{time.tm_year} + 1900, time.tm_mon) + int64_t{time.tm_mday} - 1;
  const int64_t minutes = (days * 24 + time.tm_hour) * 60 + time.tm_min;
  const int64_t seconds = minutes * 60 + time.tm_sec;
  return seconds < 0 || seconds > kLastSecond ? kInvalidTime : seconds;
}

bool TmFromSeconds(int64_t seconds, tm& time) {
  if (seconds < 0 || seconds > kLastSecond) {
    time = {-1, -1, -1, -1, -1, -1, -1, -1, -1};
    return false;
  }
  const int64_t days = seconds / kSecondsPerDay;
  const auto secondOfDay = static_cast<int32_t>(seconds % kSecondsPerDay);
  const Date date = DateOfDay(days);
  time.tm_sec = secondOfDay % 60;
  time.tm_min = secondOfDay / 60 % 60;
  time.tm_hour = secondOfDay / 3600;
  time.tm_mday = date.day;
  time.tm_mon = date.month;
  time.tm_year = date.year - 1900;
  time.tm_wday = static_cast<int32_t>((days + 4) % 7);  // 1970-01-01 was a Thursday
  time.tm_yday = static_cast<int32_t>(days - DaysToMonth(date.year, 0));
  time.tm_isdst = 0;
  return true;
}

bool AddSecondsToTime(tm* time, int32_t seconds) {
  if (time == nullptr || seconds == 0) return false;
  const int64_t start = SecondsFromTm(*time);
  return start != kInvalidTime && TmFromSeconds(start + seconds, *time);
}

int32_t SecondsBetween(const tm& from, const tm& to) {
  return Wrap32(SecondsFromTm(to) - SecondsFromTm(from));
}

int32_t MinutesBetween(const tm& from, const tm& to) { return SecondsBetween(from, to) / 60; }

std::wstring WallClockText(const tm& time) {
  if (!InRange(time.tm_wday, 0, 6) || !InRange(time.tm_mon, 0, 11) ||
      !InRange(time.tm_mday, 1, 31) || !InRange(time.tm_hour, 0, 23) ||
      !InRange(time.tm_min, 0, 59) || !InRange(time.tm_sec, 0, 60) ||
      !InRange(time.tm_year, 0, 9999 - 1900)) {
    return {};
  }
  wchar_t text[32];
  const int length = std::swprintf(text, std::size(text), L"%ls %ls %2d %02d:%02d:%02d %d\n",
                                   kDayNames[time.tm_wday], kMonthNames[time.tm_mon], time.tm_mday,
                                   time.tm_hour, time.tm_min, time.tm_sec, 1900 + time.tm_year);
  return std::wstring(text, static_cast<size_t>(length));
}

}  // namespace dozewell
