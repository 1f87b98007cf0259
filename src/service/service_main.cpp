#include "service/service_main.h"

#include <cstdint>

#include "base/process_flags.h"
#include "controller/controller.h"
#include "diagnostics/event_writer.h"
#include "power/driver_device.h"
#include "power/open_driver_device.h"
#include "rpc/rpc_server.h"
#include "service/service_host.h"
#include "service/service_status.h"
#include "service/start_gate.h"
#include "settings/setting_names.h"
#include "settings/settings_store.h"

namespace dozewell {
namespace {

constexpr uint32_t kStopWaitHintMs = 3000;

void EnterState(uint32_t state, uint32_t waitHintMs) {
  SetServiceState(state, waitHintMs);
  ReportServiceStatus(L"SetServiceStatus failed, error code = %d\n");
}

}  // namespace

void ServiceMain() {
  SetServiceState(kServiceStartPending, 0);
  if (!ConsoleMode) {
    const uint32_t error = RegisterControlHandler();
    if (error != 0) {
      LogServiceEvent(L"RegisterServiceCtrlHandler failed %d\n", error, kEventError);
      return;
    }
  }
  FeatureEnabled = SettingOr(kEnableZ7FeatureName, kDefaultEnableZ7Feature) == 1;
  DebugLogging = SettingOr(kDebugLoggingName, kDefaultDebugLogging) == 1;
  void* const notification = RegisterIdleNotification();
  TryStartController();
  OpenDriverDevice();
  EnterState(kServiceRunning, 0);

  StartRPCServer();

  EnterState(kServiceStopPending, kStopWaitHintMs);
  UnregisterIdleNotification(notification);
  if (FeatureEnabled) StopController();
  CloseDriverDevice();
  WriteSetting(kServiceStatusName, 1);
  EnterState(kServiceStopped, 0);
}

}  // namespace dozewell
