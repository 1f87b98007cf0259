#include "controller/controller.h"

#include <memory>
#include <mutex>
#include <utility>

#include "base/clock.h"
#include "base/lock.h"
#include "base/process_flags.h"
#include "controller/actions.h"
#include "controller/engine.h"
#include "controller/guards.h"
#include "controller/state_machine/state_machine.h"
#include "diagnostics/event_writer.h"
#include "optimizer/optimizer_thread.h"

namespace dozewell {
namespace {

// Lets one start or stop run at a time, so that a start can read the data file without holding
// ControllerLock. Never destroyed, like all locks.
Lock& StartLock = *new Lock;

EngineObjects BuildEngine() {
  EngineObjects built;
  built.configurations = std::make_unique<ConfigurationsImpl>();
  built.historian = std::make_unique<HistorianImpl>();
  if (!built.RenewPredictor().isKnown) {
    LogServiceEvent(L"Predictor is neither slots nor rates, slots is used\n", 0, kEventError);
  }
  return built;
}

// The predictor goes first, because its destructor unregisters it from the others.
void DeleteEngine() {
  engine.predictor.reset();
  engine.configurations.reset();
  engine.historian.reset();
}

std::unique_ptr<SleepStateMachine> BuildStateMachine() {
  auto machine = std::make_unique<SleepStateMachine>();
  machine->ReportStateMachineError = ReportStateMachineError;
  machine->GImpl_GoingToS3 = GImpl_GoingToS3;
  machine->GImpl_GoingToS4 = GImpl_GoingToS4;
  machine->GImpl_RealActivate = GImpl_RealActivate;
  machine->AH_LogEvent = AH_LogEvent;
  machine->AH_TimeStampEvent = AH_TimeStampEvent;
  machine->AH_SetPredictedSettings = AH_SetPredictedSettings;
  machine->AH_RetryPredictedHWTimer = AH_RetryPredictedHWTimer;
  machine->AH_SetNextPredictedHA = AH_SetNextPredictedHA;
  machine->AH_RestoreHA = AH_RestoreHA;
  machine->AH_CancelHWTimer = AH_CancelHWTimer;
  machine->AH_ProgramSleep = AH_ProgramSleep;
  machine->AH_PredictorContainerOff = AH_PredictorContainerOff;
  machine->AH_SetPredictorConfig = AH_SetPredictorConfig;
  machine->AH_SavePredictionData = AH_SavePredictionData;
  machine->AH_RecordHistoryEvent = AH_RecordHistoryEvent;
  machine->AH_SaveHistory = AH_SaveHistory;
  machine->LaunchOptimizerThread = [](const SMEventData*) { LaunchOptimizerThread(); };
  machine->TerminateOptimizerThread = [](const SMEventData*) { TerminateOptimizerThread(); };
  machine->AH_ResetHistory = AH_ResetHistory;
  return machine;
}

}  // namespace

void StartController() {
  const std::lock_guard startGuard(StartLock);
  {
    const std::lock_guard guard(ControllerLock);
    if (ControllerStarted) return;
    // A start that failed half-way may have left objects behind.
    DeleteEngine();
  }
  EngineObjects built = BuildEngine();

  const std::scoped_lock guard(ControllerLock, EngineLock);
  static_cast<EngineObjects&>(engine) = std::move(built);
  LocalTimeNow(LastSaveTime);
  if (StateMachine == nullptr) StateMachine = BuildStateMachine().release();
  PostEvent(std::make_unique<SMEventData>(SMEvent::Activating));
  ControllerStarted = true;
}

void StopController() {
  const std::lock_guard startGuard(StartLock);
  const std::lock_guard guard(ControllerLock);
  if (ControllerStarted) {
    delete StateMachine;
    StateMachine = nullptr;
    ControllerStarted = false;
  }
  engine.nextSleepTime.reset();
  DeleteEngine();
}

}  // namespace dozewell
