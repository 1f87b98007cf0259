#ifndef DOZEWELL_CTL_LOCAL_TIME_TEXT_H_
#define DOZEWELL_CTL_LOCAL_TIME_TEXT_H_

#include <cstdint>
#include <optional>
#include <string>

namespace dozewell::ctl {

// This machine's local time YYYY-MM-DDTHH:MM:SS at a time in seconds since 1970, UTC. Nothing
// without a time, and for one that the system cannot tell.
std::optional<std::string> LocalTimeText(const std::optional<int64_t>& utcSeconds);

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_LOCAL_TIME_TEXT_H_
