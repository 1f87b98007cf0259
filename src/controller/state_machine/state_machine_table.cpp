#include "controller/state_machine/state_machine.h"

namespace dozewell {

// A row is an event, its guard, the actions and the next state. Rows of one event are tried in
// their order; each is one line, whatever its width.
SleepStateMachine::SleepStateMachine() {
  using enum SMEvent;
  using enum SMState;
  constexpr const Guard* none = nullptr;
  // clang-format off
  table_ = {
    {Uninitialized, {
      {Activating, none, {AH_LogEvent, AH_RecordHistoryEvent, AH_RestoreHA, AH_CancelHWTimer}, Active},
    }},
    {Active, {
      {Suspend, none, {TerminateOptimizerThread, AH_RecordHistoryEvent, AH_TimeStampEvent, AH_SetPredictedSettings, AH_LogEvent}, Suspended},
      {ShuttingDown, none, {TerminateOptimizerThread, AH_RecordHistoryEvent, AH_SaveHistory, AH_LogEvent, AH_PredictorContainerOff}, Off},
      {Uninitializing, none, {TerminateOptimizerThread, AH_RecordHistoryEvent, AH_SaveHistory, AH_PredictorContainerOff}, Uninitialized},
      {ParamChanging, none, {AH_SetPredictorConfig}, Active},
      {Saving, none, {AH_SavePredictionData}, Active},
      {ResetHistory, none, {AH_ResetHistory}, Active},
    }},
    {Suspended, {
      {Activating, &GImpl_GoingToS3, {AH_SetNextPredictedHA, AH_ProgramSleep}, Spike_S4ToS3},
      {Activating, &GImpl_GoingToS4, {}, Spike_S3ToS4},
      {Activating, &GImpl_RealActivate, {AH_RecordHistoryEvent, AH_LogEvent, AH_RestoreHA, AH_CancelHWTimer, LaunchOptimizerThread}, Active},
    }},
    {Spike_S3ToS4, {
      {Suspend, none, {AH_TimeStampEvent, AH_RetryPredictedHWTimer}, Suspended},
      {ShuttingDown, none, {AH_RecordHistoryEvent, AH_LogEvent, AH_PredictorContainerOff, AH_SaveHistory}, Off},
      {Activating, none, {AH_RecordHistoryEvent, AH_LogEvent, AH_RestoreHA, AH_CancelHWTimer, LaunchOptimizerThread}, Active},
    }},
    {Spike_S4ToS3, {
      {Suspend, none, {AH_TimeStampEvent}, Suspended},
      {ShuttingDown, none, {AH_RecordHistoryEvent, AH_LogEvent, AH_PredictorContainerOff, AH_SaveHistory}, Off},
      {Activating, none, {AH_RecordHistoryEvent, AH_LogEvent, AH_RestoreHA, AH_CancelHWTimer, LaunchOptimizerThread}, Active},
    }},
    {Off, {}},
  };
  // clang-format on
}

}  // namespace dozewell
