#include "service/start_gate.h"

#include <cstdint>

#include "base/clock.h"
#include "base/process_flags.h"
#include "base/thread.h"
#include "controller/controller.h"
#include "diagnostics/event_writer.h"
#include "settings/setting_names.h"
#include "settings/settings_store.h"

namespace dozewell {
namespace {

bool ReadAttempts(const wchar_t* name, uint32_t& value) {
  if (ReadSetting(name, value, /*deleteAfterRead=*/false)) return true;
  LogServiceEvent(L"TotalAttempts or CurrentAttempt value is not defined in registry...", 0,
                  kEventSuccess);
  return false;
}

// A controller that cannot be built is tried again at the next attempt.
void ControllerStartThread() {
  try {
    StartController();
    if (SettingOr(kServiceFeedbackName, kDefaultServiceFeedback) == 0) {
      WriteSetting(kServiceFeedbackName, 1);
    }
  } catch (...) {
  }
  ControllerStarting = false;
}

}  // namespace

void TryStartController() {
  uint32_t total = 0;
  uint32_t current = 0;
  if (!ReadAttempts(kTotalAttemptsName, total) || !ReadAttempts(kCurrentAttemptName, current)) {
    return;
  }
  WriteSetting(kStartTimeName, static_cast<uint32_t>(UtcSecondsNow()));
  if (current < total) {
    WriteSetting(kCurrentAttemptName, current + 1);
    return;
  }
  if (!FeatureEnabled || ControllerStarted) return;
  // Set before the thread is started, so that two attempts at once start only one.
  if (ControllerStarting.exchange(true)) return;
  if (!StartThread(ControllerStartThread)) ControllerStarting = false;
}

}  // namespace dozewell
