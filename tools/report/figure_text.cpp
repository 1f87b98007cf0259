#include "report/figure_text.h"

#include <cmath>
#include <cstdio>
#include <iterator>

namespace dozewell::report {
namespace {

constexpr const char* kShortDayNames[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
constexpr const char* kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                   "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

template <typename... Arguments>
std::string Format(const char* format, Arguments... arguments) {
  char text[100];
  std::snprintf(text, std::size(text), format, arguments...);
  return text;
}

}  // namespace

std::string DateText(const tm& time) {
  return Format("%s %d %s", kShortDayNames[time.tm_wday], time.tm_mday, kMonths[time.tm_mon]);
}

std::string LongDateText(const tm& time) {
  return DateText(time) + " " + std::to_string(time.tm_year + 1900);
}

std::string TimeText(const tm& time) { return Format("%02d:%02d", time.tm_hour, time.tm_min); }

std::string DateTimeText(const tm& time) { return DateText(time) + ", " + TimeText(time); }

tm TimeOf(int64_t seconds) {
  tm time;
  TmFromSeconds(seconds, time);
  return time;
}

std::string PercentText(double share) { return std::to_string(std::lround(share * 100)); }

std::string CountText(int64_t count, const char* singular, const char* plural) {
  return std::to_string(count) + " " + (count == 1 ? singular : plural);
}

std::string TimeoutText(int64_t seconds) {
  if (seconds == 0) return "never hibernating";
  return "a fixed timeout of " + CountText(seconds / 60, "minute", "minutes");
}

std::string CssPercent(int64_t part, int64_t whole) {
  const int64_t hundredths = part * 10000 / whole;
  return Format("%d.%02d%%", static_cast<int>(hundredths / 100),
                static_cast<int>(hundredths % 100));
}

}  // namespace dozewell::report
