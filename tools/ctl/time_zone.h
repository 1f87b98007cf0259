#ifndef DOZEWELL_CTL_TIME_ZONE_H_
#define DOZEWELL_CTL_TIME_ZONE_H_

#include <cstdint>
#include <optional>
#include <string>

namespace dozewell::ctl {

// The system's time zone.
struct Zone {
  std::string name;            // "W. Europe Standard Time"
  int32_t minutesBehindUtc;    // now
  bool ignoresDaylightSaving;  // the user has switched its changes off
};

// Nothing when the system does not tell.
std::optional<Zone> ReadZone();

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_TIME_ZONE_H_
