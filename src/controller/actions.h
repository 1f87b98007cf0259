#ifndef DOZEWELL_CONTROLLER_ACTIONS_H_
#define DOZEWELL_CONTROLLER_ACTIONS_H_

#include "controller/state_machine/event_records.h"

namespace dozewell {

// The actions of the sleep controller; its table says when each runs. All under ControllerLock.
//
// An action reports its own failures and goes on. An exception of a listener or the predictor is
// logged; one that is no std::exception is also thrown on.

// Lets the predictor learn from an event that starts or ends use of the machine.
void AH_LogEvent(const SMEventData* event);

// Notes when the machine was suspended.
void AH_TimeStampEvent(const SMEventData* event);

// On a suspend: predicts, logs the decision, caches the user's hibernate-after timeouts, sets the
// predicted one and arms the wake timer.
void AH_SetPredictedSettings(const SMEventData* event);

// On the suspend that follows the system's own wake: arms the wake timer once more.
void AH_RetryPredictedHWTimer(const SMEventData* event);

// After a timer wake: sets the hibernate-after timeout of the second idle period.
void AH_SetNextPredictedHA(const SMEventData* event);

// Restores the user's hibernate-after timeouts.
void AH_RestoreHA(const SMEventData* event);

// Cancels nothing: an armed timer stays with the driver and finds the machine awake.
void AH_CancelHWTimer(const SMEventData* event);

// Sends the machine back to sleep on a thread of its own, so that the poster of the event can
// return before the machine sleeps.
void AH_ProgramSleep(const SMEventData* event);

// Has the predictor save its data.
void AH_PredictorContainerOff(const SMEventData* event);

// Applies the chosen parameters, unless rates are in force, and tells the predictor of the change.
void AH_SetPredictorConfig(const SMEventData* event);

// Has the predictor save its data and replaces it by one that reads them back. Takes EngineLock.
void AH_SavePredictionData(const SMEventData* event);

// Appends the event to the history: asleep for every event but Activating.
void AH_RecordHistoryEvent(const SMEventData* event);

// Saves the history. Takes EngineLock.
void AH_SaveHistory(const SMEventData* event);

// Forgets everything learnt, files included, and starts with a blank predictor. Takes EngineLock.
void AH_ResetHistory(const SMEventData* event);

}  // namespace dozewell

#endif  // DOZEWELL_CONTROLLER_ACTIONS_H_
