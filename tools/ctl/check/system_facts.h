#ifndef DOZEWELL_CTL_CHECK_SYSTEM_FACTS_H_
#define DOZEWELL_CTL_CHECK_SYSTEM_FACTS_H_

#include <cstdint>
#include <optional>
#include <string>

namespace dozewell::ctl {

struct SystemVersion {
  uint32_t major;
  uint32_t minor;
  uint32_t build;
};

// The system's time zone.
struct Zone {
  std::string name;            // "W. Europe Standard Time"
  int32_t minutesBehindUtc;    // now
  bool ignoresDaylightSaving;  // the user has switched its changes off
};

// Nothing where the system does not tell.
std::optional<SystemVersion> ReadSystemVersion();
std::optional<bool> IsAdministrator();  // this program, with an administrator's rights in force
std::optional<Zone> ReadZone();

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_CHECK_SYSTEM_FACTS_H_
