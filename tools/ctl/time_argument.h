#ifndef DOZEWELL_CTL_TIME_ARGUMENT_H_
#define DOZEWELL_CTL_TIME_ARGUMENT_H_

#include <string>

#include "base/wall_clock.h"

namespace dozewell::ctl {

// The local time that was given for an argument, as ParseTimeOption reads it. Throws
// CommandFailure.
tm ParseTimeArgument(const char* argument, const std::string& text);

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_TIME_ARGUMENT_H_
