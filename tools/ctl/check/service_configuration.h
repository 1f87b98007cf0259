#ifndef DOZEWELL_CTL_CHECK_SERVICE_CONFIGURATION_H_
#define DOZEWELL_CTL_CHECK_SERVICE_CONFIGURATION_H_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace dozewell::ctl {

inline constexpr uint32_t kStartsByItself = 2;
inline constexpr uint32_t kStartsOnDemand = 3;
inline constexpr uint32_t kNeverStarts = 4;

// What the service control manager knows of the service. What it does not tell is empty.
struct ServiceConfiguration {
  uint32_t error = 0;  // the system's, when nothing could be read
  uint32_t startType = 0;
  std::string command;  // how it is started
  std::string account;
  std::optional<bool> startsDelayed;
  // How many milliseconds after its first, second and later crashes it is started again; negative
  // where something else is done.
  std::optional<std::vector<int64_t>> restarts;
  // The privileges that its process is to keep; none stands for all of its account.
  std::optional<std::vector<std::string>> privileges;
};

ServiceConfiguration ReadServiceConfiguration();

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_CHECK_SERVICE_CONFIGURATION_H_
