#ifndef DOZEWELL_REPORT_FIGURE_TEXT_H_
#define DOZEWELL_REPORT_FIGURE_TEXT_H_

#include <cstdint>
#include <string>

#include "base/wall_clock.h"

namespace dozewell::report {

// How the report writes times and numbers. Times must come from TmFromSeconds.

std::string DateText(const tm& time);      // "Thu 29 Feb"
std::string LongDateText(const tm& time);  // "Thu 29 Feb 2024"
std::string TimeText(const tm& time);      // "17:43"
std::string DateTimeText(const tm& time);  // "Thu 29 Feb, 17:43"

// The time of wall-clock seconds that lie within the calendar.
tm TimeOf(int64_t seconds);

// A share in per cent: "62" for 0.62.
std::string PercentText(double share);

// "a fixed timeout of 180 minutes"; "never hibernating" for 0 seconds.
std::string TimeoutText(int64_t seconds);

// A part of a whole, both positive, as CSS writes it: "33.26%".
std::string CssPercent(int64_t part, int64_t whole);

}  // namespace dozewell::report

#endif  // DOZEWELL_REPORT_FIGURE_TEXT_H_
