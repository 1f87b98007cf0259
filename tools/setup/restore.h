#ifndef DOZEWELL_SETUP_RESTORE_H_
#define DOZEWELL_SETUP_RESTORE_H_

namespace dozewell::setup {

// Leaves the machine as its user had it: gives back the hibernate-after timeouts that the service
// keeps while predicted ones are in force, and switches the driver's wake timers off without
// changing their values. It makes no difference whether the service runs. A timeout that cannot be
// given back is reported to the event log. Throws std::runtime_error when the driver's timers
// cannot be read, or are on and cannot be switched off.
void RestoreMachine();

}  // namespace dozewell::setup

#endif  // DOZEWELL_SETUP_RESTORE_H_
