#ifndef DOZEWELL_COMMON_LOCAL_TIME_H_
#define DOZEWELL_COMMON_LOCAL_TIME_H_

#include <optional>
#include <string>
#include <string_view>

#include "base/wall_clock.h"

namespace dozewell {

// The local time that YYYY-MM-DDTHH:MM:SS names, with week day and year day. Nothing for any other
// form, for a time that no calendar has, and outside the years 1970 to 3000.
std::optional<tm> ParseLocalTime(std::string_view text);

// The same, where the seconds may be missing and a blank may stand for the T.
std::optional<tm> ParseLooseLocalTime(std::string_view text);

// YYYY-MM-DDTHH:MM:SS of a time that TmFromSeconds gave, the fields as they are.
std::string FormatLocalTime(const tm& time);

// Such a text, or the beginning of one, with a blank for the T, as people write it.
std::string WithBlank(std::string localTime);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_LOCAL_TIME_H_
