#ifndef DOZEWELL_CONTROLLER_ACTIONS_H_
#define DOZEWELL_CONTROLLER_ACTIONS_H_

#include "base/event_records.h"

namespace dozewell {

// What the sleep controller does on events; its table says when. All of it under ControllerLock.
//
// Actions report their own failures and go on. What a listener or the predictor throws is logged;
// if it is no std::exception it is thrown on.

// Lets the predictor learn from an event that starts or ends use of the machine.
void AH_LogEvent(const SMEventData* event);

// Notes when the machine was suspended.
void AH_TimeStampEvent(const SMEventData* event);

// On a suspend: predicts, logs what it decided, keeps the user's hibernate-after timeouts, sets the
// predicted one and arms the wake timer.
void AH_SetPredictedSettings(const SMEventData* event);

// On the suspend that follows the system's own wake: arms the wake timer once more.
void AH_RetryPredictedHWTimer(const SMEventData* event);

// After a timer wake: sets the hibernate-after timeout of the second idle period.
void AH_SetNextPredictedHA(const SMEventData* event);

// Gives the user's hibernate-after timeouts back.
void AH_RestoreHA(const SMEventData* event);

// An armed timer is left to the driver: it finds the machine awake.
void AH_CancelHWTimer(const SMEventData* event);

// Sends the machine back to sleep, on a thread of its own, so that whoever posted the event can
// return before the machine sleeps.
void AH_ProgramSleep(const SMEventData* event);

// Has the predictor save what it learnt.
void AH_PredictorContainerOff(const SMEventData* event);

// Tells the predictor of a changed parameter.
void AH_SetPredictorConfig(const SMEventData* event);

// Has the predictor save what it learnt, and replaces it by one that reads it back. Takes
// EngineLock.
void AH_SavePredictionData(const SMEventData* event);

// history_recorder.h's operations as actions.
void AH_RecordHistoryEvent(const SMEventData* event);
void AH_SaveHistory(const SMEventData* event);

// Forgets all that was learnt, files included, and starts with a blank predictor. Takes EngineLock.
void AH_ResetHistory(const SMEventData* event);

}  // namespace dozewell

#endif  // DOZEWELL_CONTROLLER_ACTIONS_H_
