#ifndef DOZEWELL_POWER_POWER_SOURCE_H_
#define DOZEWELL_POWER_POWER_SOURCE_H_

#include <cstdint>

namespace dozewell {

// The states of the line power.
inline constexpr uint8_t kLineOffline = 0;  // running on battery
inline constexpr uint8_t kLineOnline = 1;
inline constexpr uint8_t kLineUnknown = 255;

// False, with `status` left alone, when the system does not tell. Any thread.
bool ReadAcLineStatus(uint8_t& status);

}  // namespace dozewell

#endif  // DOZEWELL_POWER_POWER_SOURCE_H_
