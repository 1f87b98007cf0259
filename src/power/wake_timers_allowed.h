#ifndef DOZEWELL_POWER_WAKE_TIMERS_ALLOWED_H_
#define DOZEWELL_POWER_WAKE_TIMERS_ALLOWED_H_

namespace dozewell {

// Whether the system lets timers wake the machine on the power source that it is on now: by a
// policy, or else by the active power scheme. False when the system does not tell. Any thread.
bool AreWakeTimersAllowed();

}  // namespace dozewell

#endif  // DOZEWELL_POWER_WAKE_TIMERS_ALLOWED_H_
