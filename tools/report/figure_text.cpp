#include "report/figure_text.h"

#include <cmath>

#include "common/day_names.h"
#include "common/format_text.h"
#include "common/text.h"

namespace dozewell::report {

std::string DateText(const tm& time) {
  return DayName(time.tm_wday) + " " + std::to_string(time.tm_mday) + " " + MonthName(time.tm_mon);
}

std::string LongDateText(const tm& time) {
  return DateText(time) + " " + std::to_string(time.tm_year + 1900);
}

std::string TimeText(const tm& time) { return FormatText("%02d:%02d", time.tm_hour, time.tm_min); }

std::string DateTimeText(const tm& time) { return DateText(time) + ", " + TimeText(time); }

tm TimeOf(int64_t seconds) {
  tm time;
  TmFromSeconds(seconds, time);
  return time;
}

std::string PercentText(double share) { return std::to_string(std::lround(share * 100)); }

std::string TimeoutText(int64_t seconds) {
  if (seconds == 0) return "never hibernating";
  return "a fixed timeout of " + CountText(seconds / 60, "minute", "minutes");
}

std::string CssPercent(int64_t part, int64_t whole) {
  const int64_t hundredths = part * 10000 / whole;
  return FormatText("%d.%02d%%", static_cast<int>(hundredths / 100),
                    static_cast<int>(hundredths % 100));
}

}  // namespace dozewell::report
