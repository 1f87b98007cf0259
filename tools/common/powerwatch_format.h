#ifndef DOZEWELL_COMMON_POWERWATCH_FORMAT_H_
#define DOZEWELL_COMMON_POWERWATCH_FORMAT_H_

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace dozewell {

// The first line of a file of dozewell-powerwatch. Each further line has these columns, for one
// control that the system sent to the watch. What is not known is empty.
inline constexpr std::string_view kPowerwatchHeader =
    "control,type,identifier,local_time,utc_time,tick_ms,awake_ms,last_sleep_ms,last_wake_ms,"
    "idle_left_s";
inline constexpr size_t kPowerwatchColumns = 10;

// Stands in the column of the control when a watch begins, which the system does not tell by one.
inline constexpr uint32_t kWatchBegins = 0;

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_POWERWATCH_FORMAT_H_
