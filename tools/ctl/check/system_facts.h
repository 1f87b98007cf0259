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

// Nothing where the system does not tell.
std::optional<SystemVersion> ReadSystemVersion();
std::optional<bool> IsAdministrator();  // this program, with an administrator's rights in force

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_CHECK_SYSTEM_FACTS_H_
