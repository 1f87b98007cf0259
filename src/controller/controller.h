#ifndef DOZEWELL_CONTROLLER_CONTROLLER_H_
#define DOZEWELL_CONTROLLER_CONTROLLER_H_

namespace dozewell {

// Both may be called at any time on any thread that holds neither ControllerLock nor EngineLock.

// Builds engine and state machine, posts the first Activating and sets ControllerStarted; does
// nothing when that is set already. Throws what the predictor's construction throws (see
// cyclic_probability_predictor.h); then nothing is left behind, and a later call may succeed.
void StartController();

// Deletes engine and state machine without saving anything. Also cleans up when the controller is
// not started.
void StopController();

}  // namespace dozewell

#endif  // DOZEWELL_CONTROLLER_CONTROLLER_H_
