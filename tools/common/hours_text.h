#ifndef DOZEWELL_COMMON_HOURS_TEXT_H_
#define DOZEWELL_COMMON_HOURS_TEXT_H_

#include <cstdint>
#include <string>

namespace dozewell {

// Seconds as hours with one decimal, such as "20.7".
std::string HoursText(int64_t seconds);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_HOURS_TEXT_H_
