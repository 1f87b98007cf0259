#ifndef DOZEWELL_CTL_REQUIRE_DONE_H_
#define DOZEWELL_CTL_REQUIRE_DONE_H_

#include <string>

#include "ctl/service_calls.h"

namespace dozewell::ctl {

// Throws CommandFailure when the service did not answer, with why and what to do.
void RequireReachable(const CallResult& result);

// Does the same, and throws with `refusal` when the service refused.
void RequireDone(const CallResult& result, const std::string& refusal);

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_REQUIRE_DONE_H_
