#ifndef DOZEWELL_POWER_WAKE_POSSIBLE_H_
#define DOZEWELL_POWER_WAKE_POSSIBLE_H_

namespace dozewell {

// Whether the machine, hibernated on the power source that it is on now, can be woken at a time of
// the service's choice: by the driver, or by the system's timer if that takes the driver's place,
// the hardware can do it and wake timers are allowed. False when the system does not tell. Any
// thread.
bool WakePossible();

}  // namespace dozewell

#endif  // DOZEWELL_POWER_WAKE_POSSIBLE_H_
