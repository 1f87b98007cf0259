#ifndef DOZEWELL_BASE_WALL_CLOCK_H_
#define DOZEWELL_BASE_WALL_CLOCK_H_

#include <cstdint>
#include <string>

namespace dozewell {

// A broken-down local time, the same 36 bytes in memory and in files on every system, whatever the
// runtime library's own record looks like.
struct tm {
  int32_t tm_sec;
  int32_t tm_min;
  int32_t tm_hour;
  int32_t tm_mday;
  int32_t tm_mon;   // 0 to 11
  int32_t tm_year;  // years since 1900
  int32_t tm_wday;  // 0 is Sunday
  int32_t tm_yday;  // 0 to 365
  int32_t tm_isdst;

  bool operator==(const tm&) const = default;
};
static_assert(sizeof(tm) == 36);

// The time of a clock that could not be read.
inline constexpr tm kUnsetTime = {-1, -1, -1, -1, -1, -1, -1, -1, -1};

// Wall-clock seconds count local time since 1970-01-01 00:00 as if it were UTC, so no time zone or
// daylight saving enters any difference. These stand for _mkgmtime64 and _gmtime64_s with the
// runtime's daylight flag held at 0, and answer the same on every system.

inline constexpr int64_t kSecondsPerMinute = 60;
inline constexpr int64_t kSecondsPerDay = 86400;
constexpr int64_t kInvalidTime = -1;
// 3000-12-31 23:59:59, the last second that converts in either direction.
constexpr int64_t kLastSecond = 32535215999;

// Wall-clock seconds of `time`, whose fields may lie outside their usual ranges and whose week
// day, year day and daylight flag are ignored. kInvalidTime before 1970 or after the year 3000.
int64_t SecondsFromTm(const tm& time);

// The broken-down time of wall-clock `seconds`, with tm_isdst 0. When they lie before 1970 or after
// the year 3000: false, and every field is -1.
bool TmFromSeconds(int64_t seconds, tm& time);

// Moves `time` by a number of seconds. False for a null time, for zero seconds or an invalid time,
// which all stay as they are, and for a result out of range, which leaves every field -1.
bool AddSecondsToTime(tm* time, int32_t seconds);

// to - from in seconds, cut to 32 bits; an invalid time counts as kInvalidTime.
int32_t SecondsBetween(const tm& from, const tm& to);

// SecondsBetween / 60, truncated toward zero.
int32_t MinutesBetween(const tm& from, const tm& to);

// As WallClockText writes them, from Sunday and from January on.
inline constexpr const wchar_t* kDayNames[] = {L"Sun", L"Mon", L"Tue", L"Wed",
                                               L"Thu", L"Fri", L"Sat"};
inline constexpr const wchar_t* kMonthNames[] = {L"Jan", L"Feb", L"Mar", L"Apr", L"May", L"Jun",
                                                 L"Jul", L"Aug", L"Sep", L"Oct", L"Nov", L"Dec"};

// The text that _wasctime_s makes: "Thu Jan  1 00:00:00 1970" and a line feed, the day of the month
// padded with a blank, as its documentation has it now. Older runtime libraries pad it with a zero.
// Empty when a field is outside its range.
std::wstring WallClockText(const tm& time);

}  // namespace dozewell

#endif  // DOZEWELL_BASE_WALL_CLOCK_H_
