#include "ctl/local_time_text.h"

#include "common/local_time.h"
#include "common/utc_time.h"

namespace dozewell::ctl {

std::optional<std::string> LocalTimeText(const std::optional<int64_t>& utcSeconds) {
  tm local;
  if (!utcSeconds || !LocalTimeFromUtc(*utcSeconds, local)) return std::nullopt;
  return FormatLocalTime(local);
}

}  // namespace dozewell::ctl
