#ifndef DOZEWELL_POWER_SUSPEND_H_
#define DOZEWELL_POWER_SUSPEND_H_

namespace dozewell {

// Puts the machine to sleep, not into hibernation, with wake-ups enabled. Until it returns, the
// process has the privilege for that enabled. It returns when the machine is awake again, so no
// other thread may wait for it. False when the machine did not sleep.
bool SuspendSystem();

}  // namespace dozewell

#endif  // DOZEWELL_POWER_SUSPEND_H_
