#ifndef DOZEWELL_CTL_SERVICE_QUERY_H_
#define DOZEWELL_CTL_SERVICE_QUERY_H_

#include <cstdint>

namespace dozewell::ctl {

// What the service control manager says of the service.
struct ServiceQuery {
  uint32_t error;        // 0, or the system's error code when the query failed
  uint32_t state;        // without an error: kServiceRunning and its like (service/service_host.h)
  uint32_t process = 0;  // its id; 0 while it has none
  // It is stopped only because its delayed start after the system's is still to come.
  bool awaitsStart = false;
};

// The error for a service that is not installed.
inline constexpr uint32_t kErrorServiceMissing = 1060;
inline constexpr uint32_t kErrorAccessDenied = 5;

ServiceQuery QueryService();

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_SERVICE_QUERY_H_
