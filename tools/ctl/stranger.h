#ifndef DOZEWELL_CTL_STRANGER_H_
#define DOZEWELL_CTL_STRANGER_H_

#include "ctl/command.h"

namespace dozewell::ctl {

// Warns the user when the service was called and another process than the installed service's
// serves its pipe: any program may take the pipe's name before the service has started.
void WarnOfStranger(const Console& console);

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_STRANGER_H_
