#include "service/start_gate.h"

#include <cstdint>

#include "base/clock.h"
#include "base/service_state.h"
#include "base/thread.h"
#include "controller/controller.h"
#include "diagnostics/event_writer.h"
#include "settings/settings_store.h"

namespace dozewell {
namespace {

constexpr wchar_t kCurrentAttempt[] = L"CurrentAttempt";
constexpr wchar_t kServiceFeedback[] = L"ServiceFeedback";

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
    uint32_t feedback = 0;
    ReadSetting(kServiceFeedback, feedback, /*deleteAfterRead=*/false);
    if (feedback == 0) WriteSetting(kServiceFeedback, 1);
  } catch (...) {
  }
  ControllerStarting = false;
}

}  // namespace

void TryStartController() {
  uint32_t total = 0;
  uint32_t current = 0;
  if (!ReadAttempts(L"TotalAttempts", total) || !ReadAttempts(kCurrentAttempt, current)) return;
  WriteSetting(L"StartTime", static_cast<uint32_t>(UtcSecondsNow()));
  if (current < total) {
    WriteSetting(kCurrentAttempt, current + 1);
    return;
  }
  if (!FeatureEnabled || ControllerStarted) return;
  // Set before there is a thread, so that two attempts at once make one.
  if (ControllerStarting.exchange(true)) return;
  if (!StartThread(ControllerStartThread)) ControllerStarting = false;
}

}  // namespace dozewell
