#include "service/service_main.h"

#include <cstdint>

#include "base/service_state.h"
#include "controller/controller.h"
#include "diagnostics/event_writer.h"
#include "power/driver_device.h"
#include "rpc/rpc_server.h"
#include "service/service_host.h"
#include "service/service_status.h"
#include "service/start_gate.h"
#include "settings/settings_store.h"

namespace dozewell {
namespace {

constexpr uint32_t kStopWaitHintMs = 3000;

void EnterState(uint32_t state, uint32_t waitHintMs) {
  SetServiceState(state, waitHintMs);
  ReportServiceStatus(L"SetServiceStatus failed, error code = %d\n");
}

bool IsOne(const wchar_t* name, uint32_t value) {
  ReadSetting(name, value, /*deleteAfterRead=*/false);
  return value == 1;
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
  FeatureEnabled = IsOne(L"EnableZ7Feature", 1);
  DebugLogging = IsOne(L"DebugLogging", 0);
  void* const notification = RegisterIdleNotification();
  TryStartController();
  OpenDriverDevice();
  EnterState(kServiceRunning, 0);

  StartRPCServer();

  EnterState(kServiceStopPending, kStopWaitHintMs);
  UnregisterIdleNotification(notification);
  if (FeatureEnabled) StopController();
  CloseDriverDevice();
  WriteSetting(L"ServiceStatus", 1);
  EnterState(kServiceStopped, 0);
}

}  // namespace dozewell
