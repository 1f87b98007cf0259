#ifndef DOZEWELL_SETUP_RESTORE_H_
#define DOZEWELL_SETUP_RESTORE_H_

namespace dozewell::setup {

// Leaves the machine as its user had it: gives back the hibernate-after timeouts that the service
// keeps while predicted ones are in force, and switches the driver's wake timers off, which keep
// what they are set to. Whether the service runs makes no difference. A timeout that cannot be
// given back is reported to the event log. Throws std::runtime_error when the driver has timers
// switched on and does not switch them off, or does not tell.
void RestoreMachine();

}  // namespace dozewell::setup

#endif  // DOZEWELL_SETUP_RESTORE_H_
