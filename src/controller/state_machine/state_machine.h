#ifndef DOZEWELL_CONTROLLER_STATE_MACHINE_STATE_MACHINE_H_
#define DOZEWELL_CONTROLLER_STATE_MACHINE_STATE_MACHINE_H_

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "controller/state_machine/event_records.h"

namespace dozewell {

enum class SMState : int32_t {
  Uninitialized = -1,
  Active = 0,
  Spike_S3ToS4 = 1,
  Spike_S4ToS3 = 2,
  Suspended = 3,
  Off = 4,
};

// The names in messages, "UNKNOWN" for values that have none. They live as long as the program.
const wchar_t* SMEventName(SMEvent event);
const wchar_t* SMStateName(SMState state);

// The sleep controller: it decides which handlers run, in which order, on an event in the current
// state. It takes no lock, because PostEvent lets in one dispatch at a time.
class SleepStateMachine {
 public:
  using ErrorHandler = void (*)(const wchar_t* text);
  using Guard = bool (*)(const SMEventData* event);
  using Action = void (*)(const SMEventData* event);

  // The table is built here; it refers to the slots below, which may be filled later.
  SleepStateMachine();
  SleepStateMachine(const SleepStateMachine&) = delete;
  SleepStateMachine& operator=(const SleepStateMachine&) = delete;

  // Runs the handlers for one event on the caller's thread and moves to the next state when all of
  // them have returned. The caller keeps ownership of the event. What a handler throws reaches the
  // caller; then the handlers after it do not run and the state stays as it was. A null event is
  // reported as an error without a check that the error handler's slot is filled.
  void Dispatch(const SMEventData* event);

  // The slots. An empty guard counts as false; an empty action is skipped.
  ErrorHandler ReportStateMachineError = nullptr;
  Guard GImpl_GoingToS3 = nullptr;
  Guard GImpl_GoingToS4 = nullptr;
  Guard GImpl_RealActivate = nullptr;
  Action AH_LogEvent = nullptr;
  Action AH_TimeStampEvent = nullptr;
  Action AH_SetPredictedSettings = nullptr;
  Action AH_RetryPredictedHWTimer = nullptr;
  Action AH_SetNextPredictedHA = nullptr;
  Action AH_RestoreHA = nullptr;
  Action AH_CancelHWTimer = nullptr;
  Action AH_ProgramSleep = nullptr;
  Action AH_PredictorContainerOff = nullptr;
  Action AH_SetPredictorConfig = nullptr;
  Action AH_SavePredictionData = nullptr;
  Action AH_RecordHistoryEvent = nullptr;
  Action AH_SaveHistory = nullptr;
  Action LaunchOptimizerThread = nullptr;
  Action TerminateOptimizerThread = nullptr;
  Action AH_ResetHistory = nullptr;

  SMState current = SMState::Uninitialized;

 private:
  struct Transition {
    SMEvent event;
    const Guard* guard;  // null when there is none
    std::vector<std::reference_wrapper<const Action>> actions;
    SMState nextState;
  };
  struct StateEntry {
    SMState state;
    std::vector<Transition> transitions;
  };

  void Take(const Transition& transition, const SMEventData* event);

  std::vector<StateEntry> table_;
};

// The one machine, null while the controller is not started. StartController makes it,
// StopController deletes it. Under ControllerLock.
extern SleepStateMachine* StateMachine;

// Dispatches the event on the caller's thread, under ControllerLock, and deletes it, also when a
// handler throws. Without a machine it is only deleted. Any thread, unless it holds EngineLock
// without ControllerLock.
//
// ResetHistory's action takes EngineLock, so it waits for that lock without holding ControllerLock,
// and a suspend can go first. The other events that need EngineLock come from the control handler's
// thread, which is also the one that suspends come on.
void PostEvent(std::unique_ptr<SMEventData> event);

// Makes an event and posts it, for callers that nothing may be thrown into: what the handlers throw
// they have reported, and it is dropped here.
template <typename Event, typename... Arguments>
void PostDroppingExceptions(Arguments&&... arguments) {
  try {
    PostEvent(std::make_unique<Event>(std::forward<Arguments>(arguments)...));
  } catch (...) {
  }
}

}  // namespace dozewell

#endif  // DOZEWELL_CONTROLLER_STATE_MACHINE_STATE_MACHINE_H_
