#include "controller/actions.h"

#include <exception>
#include <mutex>
#include <string>

#include "base/clock.h"
#include "base/durable_file.h"
#include "base/file.h"
#include "base/lock.h"
#include "base/thread.h"
#include "controller/engine.h"
#include "diagnostics/debugger.h"
#include "diagnostics/event_writer.h"
#include "diagnostics/message_format.h"
#include "optimizer/apply_best_set.h"
#include "optimizer/best_set.h"
#include "power/driver_device.h"
#include "power/driver_timer.h"
#include "power/hibernate_after.h"
#include "power/power_scheme.h"
#include "power/suspend.h"
#include "prediction/cyclic_probability_predictor.h"
#include "prediction/history_file.h"
#include "prediction/history_recorder.h"
#include "prediction/predictor_choice.h"
#include "prediction/rates/rates_file.h"
#include "prediction/suspend_decision.h"
#include "settings/data_folder.h"
#include "settings/setting_names.h"
#include "settings/settings_store.h"

namespace dozewell {
namespace {

tm Now() {
  tm now = kUnsetTime;
  LocalTimeNow(now);
  return now;
}

// Runs a call into the engine. A std::exception that it throws is logged with its own message.
template <typename Call>
void LogExceptionsOf(Call call) {
  try {
    call();
  } catch (const std::exception& exception) {
    LogNarrowAndTrace(exception.what());
  }
}

// The same, and anything else that it throws is logged with the text given and thrown on.
template <typename Call>
void LogAndRethrowUnknown(const char* unknownExceptionText, Call call) {
  try {
    LogExceptionsOf(call);
  } catch (...) {
    LogNarrowAndTrace(unknownExceptionText);
    throw;
  }
}

void NotifyHistorian(const SMEventData& event, int32_t state, const char* unknownExceptionText) {
  LogAndRethrowUnknown(unknownExceptionText, [&] {
    engine.historian->NotifyListener({event.time, state});
  });
}

// Where no set beat the fixed timeout, applying that result has disabled prediction. That says
// nothing about rates.
bool IsPredictionDisabled() {
  if (SettingOr(kDisablePredictionName, kDefaultDisablePrediction) != 1) return false;
  return !RatesInForce ||
         SettingOr(kServiceFeedbackName, kDefaultServiceFeedback) != kFeedbackDisabled;
}

std::vector<PredictionRecord> Predictions(const tm& now) {
  std::vector<PredictionRecord> predictions;
  if (IsPredictionDisabled() || engine.predictor == nullptr) return predictions;
  LogAndRethrowUnknown(
      "AH_SetPredictedSettings: PredictorObj::GetPredictions threw an unknown exception",
      [&] { predictions = engine.predictor->GetPredictions(now); });
  return predictions;
}

void LogDecision(const wchar_t* label, const std::wstring& text) {
  const std::wstring line = label + text;
  LogServiceEvent(line.c_str(), 0, kEventInformation);
  TraceToDebugger(line.c_str());
}

void CacheUserHA(uint32_t source, const wchar_t* cachedName) {
  uint32_t minutes = 0;
  if (ReadHA(source, minutes)) WriteSetting(cachedName, minutes);
}

void ArmTimer(int32_t minutes) {
  MessageBuffer text;
  FormatMessageText(L"HW Timer Duration = %d min\n", static_cast<uint32_t>(minutes), text);
  TraceToDebugger(text.data());
  if (minutes > 0) {
    DriverFuncCall.ArmDriverTimerDuration(TimerDurationPayload(static_cast<uint32_t>(minutes)));
  }
}

void SleepNow() {
  if (!SuspendSystem()) LogServiceEvent(L"Failed to move the system to sleep", 0, kEventSuccess);
}

// Without a folder there is nothing to delete.
void DeleteLearntFiles() {
  const std::wstring folder = GetDataFolder();
  if (folder.empty()) return;
  RemoveDurableFile(PathInFolder(folder, kDataFileName));
  RemoveDurableFile(PathInFolder(folder, kHistoryFileName));
  RemoveDurableFile(PathInFolder(folder, kRatesFileName));
}

}  // namespace

void AH_LogEvent(const SMEventData* event) {
  if (event == nullptr) return;
  TraceToDebugger(L"AH_LogEvent\n");
  const bool isUse = event->event == SMEvent::Activating || event->event == SMEvent::Suspend ||
                     event->event == SMEvent::ShuttingDown;
  if (engine.historian == nullptr || !isUse) return;
  // The events of use are the first states of the time line, under the same numbers.
  static_assert(static_cast<int32_t>(SMEvent::Activating) == Activating &&
                static_cast<int32_t>(SMEvent::Suspend) == Suspend &&
                static_cast<int32_t>(SMEvent::ShuttingDown) == ShuttingDown);
  NotifyHistorian(*event, static_cast<int32_t>(event->event),
                  "AH_LogEvent: HistorianObj::NotifyListener threw an unknown exception");
}

void AH_TimeStampEvent(const SMEventData* event) {
  if (event == nullptr || event->event != SMEvent::Suspend) return;
  TraceToDebugger(L"AH_TimeStampEvent\n");
  engine.suspendTime = event->time;
}

void AH_SetPredictedSettings(const SMEventData*) {
  TraceToDebugger(L"AH_SetPredictedSettings\n");
  const tm now = Now();
  TraceToDebugger((L"Now: " + WallClockText(now)).c_str());

  const std::vector<PredictionRecord> predictions = Predictions(now);
  const SuspendDecision decision = DecideSuspend(predictions, now);
  engine.nextSleepTime = decision.nextSleepTime;
  engine.nextHAMinutes =
      decision.nextHAMinutes ? static_cast<uint32_t>(*decision.nextHAMinutes) : kNoHA;
  LogDecision(L"Predicted Hibernate at: ", decision.hibernateAt);
  LogDecision(L"Predicted Sleep restored at: ", decision.sleepRestoredAt);
  LogDecision(L"Predicted Hibernate next at: ", decision.hibernateNextAt);

  if (decision.haMinutes) {
    CacheUserHA(kPowerSourceAC, kCachedHAForACName);
    CacheUserHA(kPowerSourceDC, kCachedHAForDCName);
    SetPassedHA(*decision.haMinutes);
  }
  if (decision.timerMinutes) ArmTimer(*decision.timerMinutes);
}

void AH_RetryPredictedHWTimer(const SMEventData*) {
  if (!engine.nextSleepTime) return;
  TraceToDebugger(L"AH_RetryPredictedHWTimer\n");
  ArmTimer(MinutesBetween(Now(), *engine.nextSleepTime));
  engine.nextSleepTime.reset();
}

void AH_SetNextPredictedHA(const SMEventData*) {
  if (engine.nextHAMinutes == kNoHA) return;
  TraceToDebugger(L"AH_SetNextPredictedHA\n");
  SetPassedHA(static_cast<int32_t>(engine.nextHAMinutes));
  engine.nextHAMinutes = kNoHA;
}

void AH_RestoreHA(const SMEventData*) {
  TraceToDebugger(L"AH_RestoreHA\n");
  RestoreCachedHA();
}

void AH_CancelHWTimer(const SMEventData*) {
  TraceToDebugger(L"AH_CancelHWTimer\n");
  CancelStandInTimer();
}

void AH_ProgramSleep(const SMEventData*) {
  TraceToDebugger(L"AH_ProgramSleep\n");
  StartThread(SleepNow);
  engine.nextSleepTime.reset();
}

void AH_PredictorContainerOff(const SMEventData* event) {
  if (event == nullptr || engine.historian == nullptr) return;
  TraceToDebugger(L"AH_PredictorContainerOff\n");
  NotifyHistorian(
      *event, ContainerStopped,
      "AH_PredictorContainerOff: HistorianObj::NotifyListener threw an unknown exception");
}

void AH_SetPredictorConfig(const SMEventData* event) {
  if (!RatesInForce) ApplyBestPredictorParameters();
  const auto* const change = dynamic_cast<const ParamChangeEventData*>(event);
  if (change == nullptr || engine.configurations == nullptr) return;
  TraceToDebugger(L"AH_SetPredictorConfig\n");
  LogAndRethrowUnknown(
      "AH_SetPredictorConfig: ConfigObj::NotifyListener threw an unknown exception",
      [&] { engine.configurations->NotifyListener(change->param); });
}

void AH_SavePredictionData(const SMEventData* event) {
  if (event == nullptr || engine.historian == nullptr) return;
  TraceToDebugger(L"AH_SavePredictionData\n");
  NotifyHistorian(*event, ContainerStopped,
                  "AH_SavePredictionData: HistorianObj::NotifyListener threw an unknown exception");
  LogExceptionsOf([] {
    const std::lock_guard guard(EngineLock);
    engine.RenewPredictor();
  });
}

void AH_RecordHistoryEvent(const SMEventData* event) {
  if (event == nullptr) return;
  TraceToDebugger(L"AH_RecordHistoryEvent\n");
  AppendToHistory(SecondsFromTm(event->time), event->event != SMEvent::Activating);
}

void AH_SaveHistory(const SMEventData*) {
  LogExceptionsOf([] { AH_SaveHistory(); });
}

void AH_ResetHistory(const SMEventData*) {
  TraceToDebugger(L"AH_ResetHistory\n");
  const std::lock_guard guard(EngineLock);
  engine.predictor.reset();
  ClearPendingHistory();
  DeleteLearntFiles();
  WriteSetting(kServiceFeedbackName, 1);
  LogExceptionsOf([] { engine.RenewPredictor(); });
}

}  // namespace dozewell
