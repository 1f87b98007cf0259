#ifndef DOZEWELL_CTL_UNREACHABLE_TEXT_H_
#define DOZEWELL_CTL_UNREACHABLE_TEXT_H_

#include <cstdint>
#include <string>

#include "ctl/service_query.h"

namespace dozewell::ctl {

// Why the service does not answer, and what to do: from the RPC runtime's error code of the call
// and what the service control manager says.
std::string UnreachableText(uint32_t status, const ServiceQuery& service);

// "running", "not installed" and the like.
std::string ServiceStateText(const ServiceQuery& service);

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_UNREACHABLE_TEXT_H_
