#include "ctl/wake_time_text.h"

#include <cstddef>

#include "base/wall_clock.h"
#include "common/local_time.h"

namespace dozewell::ctl {
namespace {

constexpr int32_t kFirstYear = 2000;
constexpr int32_t kLastYear = kFirstYear + 0x7F;
constexpr int32_t kYearOfTm = 1900;

// "YYYY-MM-DD HH:MM"
constexpr size_t kMinuteLength = 16;

}  // namespace

std::optional<WakeTime> ToWakeTime(const tm& time) {
  const int32_t year = time.tm_year + kYearOfTm;
  if (year < kFirstYear || year > kLastYear) return std::nullopt;
  return WakeTime{time.tm_min, time.tm_hour, time.tm_mday, time.tm_mon + 1, year - kFirstYear};
}

std::optional<std::string> CalendarText(const WakeTime& wakeTime) {
  tm time = {};
  time.tm_min = wakeTime.minute;
  time.tm_hour = wakeTime.hour;
  time.tm_mday = wakeTime.day;
  time.tm_mon = wakeTime.month - 1;
  time.tm_year = wakeTime.year + kFirstYear - kYearOfTm;
  tm real;
  if (!TmFromSeconds(SecondsFromTm(time), real)) return std::nullopt;
  // The 31st of April has come back as another day.
  if (ToWakeTime(real) != wakeTime) return std::nullopt;
  return WithBlank(FormatLocalTime(real).substr(0, kMinuteLength));
}

Json WakeTimeJson(const WakeTime& wakeTime) {
  return {{"year", wakeTime.year},
          {"month", wakeTime.month},
          {"day", wakeTime.day},
          {"hour", wakeTime.hour},
          {"minute", wakeTime.minute}};
}

std::string WakeTimeText(const WakeTime& wakeTime) {
  if (wakeTime == WakeTime{}) return "no time is set";
  if (const auto text = CalendarText(wakeTime)) return *text;
  return "no time of the calendar (year " + std::to_string(wakeTime.year) + ", month " +
         std::to_string(wakeTime.month) + ", day " + std::to_string(wakeTime.day) + ", hour " +
         std::to_string(wakeTime.hour) + ", minute " + std::to_string(wakeTime.minute) + ")";
}

}  // namespace dozewell::ctl
