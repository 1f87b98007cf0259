#include "service/control_handler.h"

#include <cstdlib>
#include <cstring>
#include <mutex>

#include "base/clock.h"
#include "base/lock.h"
#include "base/numbers.h"
#include "base/process_flags.h"
#include "controller/state_machine/state_machine.h"
#include "diagnostics/event_writer.h"
#include "optimizer/optimizer_thread.h"
#include "rpc/rpc_server.h"
#include "service/service_host.h"
#include "service/service_status.h"
#include "service/start_gate.h"

namespace dozewell {
namespace {

// A day and a second.
constexpr int32_t kSecondsBetweenSaves = 86401;

void Post(SMEvent event) { PostDroppingExceptions<SMEventData>(event); }

void PostIfStarted(SMEvent event) {
  if (ControllerStarted) Post(event);
}

// The controller saves once a day, while the system does its idle-time work.
void SaveOncePerDay() {
  const std::lock_guard guard(ControllerLock);
  tm now;
  if (!LocalTimeNow(now)) return;
  const int64_t seconds = SecondsBetween(LastSaveTime, now);
  if (Wrap32(std::abs(seconds)) < kSecondsBetweenSaves) return;
  LastSaveTime = now;
  Post(SMEvent::Saving);
}

bool IsIdleBackgroundTask(const void* setting) {
  return setting != nullptr &&
         std::memcmp(setting, kIdleBackgroundTask.data(), kIdleBackgroundTask.size()) == 0;
}

void HandlePowerEvent(uint32_t type, const void* data) {
  switch (type) {
    case kPowerSuspend:
      PostIfStarted(SMEvent::Suspend);
      break;
    case kPowerStatusChange:
      LaunchOptimizerThread();
      break;
    case kPowerResumeAutomatic:
      if (ControllerStarted) {
        Post(SMEvent::Activating);
      } else {
        TryStartController();
      }
      break;
    case kPowerSettingChange:
      if (ControllerStarted && IsIdleBackgroundTask(data)) SaveOncePerDay();
      break;
    default:
      break;
  }
}

}  // namespace

uint32_t ServiceCtrlHandler(uint32_t control, uint32_t eventType, const void* eventData) {
  const std::lock_guard guard(StatusLock);
  switch (control) {
    case kControlStop:
      PostIfStarted(SMEvent::Uninitializing);
      StopRPCServer();
      SetServiceState(kServiceStopPending);
      break;
    case kControlPause:
      SetServiceState(kServicePaused);
      break;
    case kControlContinue:
      SetServiceState(kServiceRunning);
      break;
    case kControlInterrogate:
    case kControlSessionChange:
      break;
    case kControlShutdown:
      PostIfStarted(SMEvent::ShuttingDown);
      SetServiceState(kServiceStopped);
      break;
    case kControlPowerEvent:
      HandlePowerEvent(eventType, eventData);
      break;
    default:
      LogServiceEvent(L"Unrecognized opcode %ld\n", control, kEventError);
      break;
  }
  ReportServiceStatus(L"SetServiceStatus error %ld\n");
  return 0;
}

bool ConsoleCtrlHandler(uint32_t type) {
  switch (type) {
    case 0:  // Ctrl+C
    case 1:  // Ctrl+Break
    case 2:  // the console is closed
    case 5:  // the user logs off
    case 6:  // the system shuts down
      ServiceCtrlHandler(kControlStop, 0, nullptr);
      return true;
    default:
      return false;
  }
}

}  // namespace dozewell
