#include "optimizer/optimizer_thread.h"

#include <bit>
#include <cstdint>
#include <mutex>

#include "base/clock.h"
#include "base/file.h"
#include "base/lock.h"
#include "base/numbers.h"
#include "base/process_flags.h"
#include "base/wall_clock.h"
#include "diagnostics/event_writer.h"
#include "optimizer/run_optimizer.h"
#include "optimizer/simulator/stop_request.h"
#include "power/power_source.h"
#include "prediction/history_file.h"
#include "prediction/history_recorder.h"
#include "prediction/predictor_choice.h"
#include "settings/data_folder.h"
#include "settings/setting_names.h"
#include "settings/settings_store.h"

namespace dozewell {
namespace {

// Guards OptimizerThreadHandle, so that a change of the power status waits for no other event.
// Never destroyed, like all locks.
Lock& HandleLock = *new Lock;

uint32_t LowBits(ThreadHandle thread) {
  return static_cast<uint32_t>(std::bit_cast<uintptr_t>(thread));
}

// Logs only with debug logging. These events have their type as the argument and the argument as
// their type, and filters in use rely on that.
void LogWithTypeAsArgument(const wchar_t* text) {
  if (DebugLogging) LogServiceEvent(text, kEventInformation, kEventSuccess);
}

// The first launch only stores the time from which the interval counts.
bool IsRunDue(int64_t now) {
  int64_t last = kNoOptimizerRun;
  ReadLastOptimizerRun(last);
  const uint32_t intervalSeconds =
      SettingOr(kOptimizerIntervalName, kDefaultOptimizerIntervalDays) * uint32_t{kSecondsPerDay};
  if (last == kNoOptimizerRun) {
    LogWithTypeAsArgument(L"Optimizer skipped\n");
    WriteLastOptimizerRun(now);
    return false;
  }
  return WrapSubtract64(now, last) > int64_t{intervalSeconds};
}

// Decides whether a run that is due has to wait because the machine runs on battery, and counts how
// often it had to.
bool PostponeOnBattery() {
  uint8_t lineStatus = kLineUnknown;
  if (ReadAcLineStatus(lineStatus) && lineStatus != kLineOffline) return false;
  uint32_t total = 0;
  uint32_t current = 0;
  if (!ReadSetting(kTotalBatteryAttemptsName, total, /*deleteAfterRead=*/false) ||
      !ReadSetting(kCurrentBatteryAttemptsName, current, /*deleteAfterRead=*/false)) {
    LogServiceEvent(
        L"TotalOptimizerAttemptsInDCmode or CurrentOptimizerAttemptsInDCmode value is  not defined "
        L"in registry...",
        0, kEventSuccess);
    return true;
  }
  if (current >= total) return false;
  WriteSetting(kCurrentBatteryAttemptsName, current + 1);
  LogServiceEvent(L"Optimizer thread run postponed as current power source is DC", 0,
                  kEventSuccess);
  return true;
}

// A stop request does not end this wait.
void WaitBeforeRun() {
  const int64_t minutes = SettingOr(kOptimizerDelayName, kDefaultOptimizerDelayMinutes);
  const int32_t seconds = Wrap32(minutes * 60);
  if (seconds <= 0) return;
  if (DebugLogging) {
    LogServiceEvent(L"Optimizer will sleep for %d seconds\n", static_cast<uint32_t>(seconds),
                    kEventInformation);
  }
  SleepMilliseconds(static_cast<uint32_t>(seconds) * 1000);
}

void RunIfDue() {
  const int64_t now = UtcSecondsNow();
  if (!IsRunDue(now) || PostponeOnBattery()) return;
  WaitBeforeRun();
  AH_SaveHistory();
  if (RatesInForce) {
    // Rates are not tuned. A request to stop the search ends with the thread all the same.
    OptimizerStopRequested = false;
  } else {
    RunOptimizer(PathInFolder(GetDataFolder(), kHistoryFileName));
  }
  WriteLastOptimizerRun(now);
  WriteSetting(kCurrentBatteryAttemptsName, 0);
}

void OptimizerThreadProc() {
  try {
    RunIfDue();
  } catch (...) {
    LogWithTypeAsArgument(L"Optimizer exception\n");
  }
}

}  // namespace

void LaunchOptimizerThread() {
  const std::lock_guard guard(HandleLock);
  if (OptimizerThreadHandle != kNoThread) {
    if (IsThreadRunning(OptimizerThreadHandle)) {
      LogServiceEvent(L"Optimizer thread still alive, %lu\n", LowBits(OptimizerThreadHandle),
                      kEventInformation);
      return;
    }
    CloseThread(OptimizerThreadHandle);
  }
  OptimizerThreadHandle = StartWatchedThread(OptimizerThreadProc);
  LogServiceEvent(L"Launch optimizer thread, %lu\n", LowBits(OptimizerThreadHandle),
                  kEventInformation);
}

void TerminateOptimizerThread() {
  const std::lock_guard guard(HandleLock);
  if (OptimizerThreadHandle == kNoThread || !IsThreadRunning(OptimizerThreadHandle)) return;
  OptimizerStopRequested = true;
  LogServiceEvent(L"Terminate optimizer thread, %lu\n", LowBits(OptimizerThreadHandle),
                  kEventInformation);
}

}  // namespace dozewell
