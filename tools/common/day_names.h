#ifndef DOZEWELL_COMMON_DAY_NAMES_H_
#define DOZEWELL_COMMON_DAY_NAMES_H_

#include <string>

#include "prediction/slot_probability.h"

namespace dozewell {

// "Mon" of a tm_wday, which counts from Sunday; "???" of a number that is no day.
std::string DayName(int weekday);

// "Jan" of a tm_mon, which counts from 0; "???" of a number that is no month.
std::string MonthName(int month);

// "Thu" of day 0 of a cycle of a week, which begins on a Thursday as 1970 did.
std::string CycleDayName(int day);

// The day of such a cycle that is this many days after its Monday, which is day 4.
constexpr int CycleDayFromMonday(int days) {
  constexpr int kMondayOfCycle = 4;
  return (kMondayOfCycle + days) % kDaysInWeek;
}

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_DAY_NAMES_H_
