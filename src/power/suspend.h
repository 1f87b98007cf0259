#ifndef DOZEWELL_POWER_SUSPEND_H_
#define DOZEWELL_POWER_SUSPEND_H_

namespace dozewell {

// Puts the machine to sleep, not into hibernation, with wake-ups enabled; returns once it is awake
// again, so never on a thread that somebody waits for. False when the machine did not sleep.
bool SuspendSystem();

}  // namespace dozewell

#endif  // DOZEWELL_POWER_SUSPEND_H_
