#ifndef DOZEWELL_CTL_MACHINE_NAME_H_
#define DOZEWELL_CTL_MACHINE_NAME_H_

#include <optional>
#include <string>

namespace dozewell::ctl {

// The name that this machine has in the network, without its domain, in UTF-8. Nothing when the
// system does not tell.
std::optional<std::string> ReadMachineName();

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_MACHINE_NAME_H_
