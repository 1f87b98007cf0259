#include <windows.h>
// After windows.h, which it needs.
#include <powrprof.h>

#include "power/suspend.h"

namespace dozewell {

bool SuspendSystem() { return SetSuspendState(FALSE, FALSE, FALSE) != FALSE; }

}  // namespace dozewell
