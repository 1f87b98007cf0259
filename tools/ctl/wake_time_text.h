#ifndef DOZEWELL_CTL_WAKE_TIME_TEXT_H_
#define DOZEWELL_CTL_WAKE_TIME_TEXT_H_

#include <optional>
#include <string>

#include "base/wall_clock.h"
#include "common/json.h"
#include "rpc/procedures.h"

namespace dozewell::ctl {

// The driver decides what the fields of a wake time mean. Our convention: month 1 to 12, and the
// year counted from 2000, so that its 7 bits reach 2127.

inline constexpr const char* kWakeTimeRange = "2000-01-01 00:00 to 2127-12-31 23:59";

// The wake time of a local time, whose seconds do not count. Nothing for one out of range.
std::optional<WakeTime> ToWakeTime(const tm& time);

// The text of a wake time. Nothing for fields that are no time of the calendar.
std::optional<std::string> CalendarText(const WakeTime& wakeTime);

// The five numbers of a wake time as a JSON object, the year from 2000 on.
Json WakeTimeJson(const WakeTime& wakeTime);

// The same in words for any fields: "no time is set" when all are 0.
std::string WakeTimeText(const WakeTime& wakeTime);

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_WAKE_TIME_TEXT_H_
