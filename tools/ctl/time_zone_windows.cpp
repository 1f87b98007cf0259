#include <windows.h>

#include "base/utf8.h"
#include "ctl/time_zone.h"

namespace dozewell::ctl {

std::optional<Zone> ReadZone() {
  DYNAMIC_TIME_ZONE_INFORMATION zone = {};
  const DWORD season = GetDynamicTimeZoneInformation(&zone);
  if (season == TIME_ZONE_ID_INVALID) return std::nullopt;
  const LONG seasonBias = season == TIME_ZONE_ID_DAYLIGHT ? zone.DaylightBias : zone.StandardBias;
  return Zone{NarrowToUtf8(zone.TimeZoneKeyName), static_cast<int32_t>(zone.Bias + seasonBias),
              zone.DynamicDaylightTimeDisabled != FALSE};
}

}  // namespace dozewell::ctl
