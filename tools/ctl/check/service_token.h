#ifndef DOZEWELL_CTL_CHECK_SERVICE_TOKEN_H_
#define DOZEWELL_CTL_CHECK_SERVICE_TOKEN_H_

#include <cstdint>
#include <string>

namespace dozewell::ctl {

// The rights of a running service.
struct ServiceToken {
  uint32_t error = 0;     // the system's, when it does not let this user see the rest
  std::string account;    // a SID
  bool maySleep = false;  // it holds the privilege that puts a machine to sleep, enabled or not
};

// Of a process, with the rights that this user has: no privilege is enabled for it.
ServiceToken ReadServiceToken(uint32_t process);

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_CHECK_SERVICE_TOKEN_H_
