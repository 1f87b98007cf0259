#include <windows.h>

#include <string>

#include "shared/fields.h"
#include "stand_ins/control_channel.h"
#include "stand_ins/failing_import.h"
#include "stand_ins/service_record.h"

// Records what the service tells the service control manager and asks it for.

namespace dozewell::lab {
namespace {

SERVICE_STATUS_HANDLE WINAPI RegisterHandler(const wchar_t* name, LPHANDLER_FUNCTION_EX handler,
                                             void* context);
BOOL WINAPI SendStatus(SERVICE_STATUS_HANDLE handle, SERVICE_STATUS* status);
BOOL WINAPI ChangeConfig(SC_HANDLE service, DWORD level, void* info);
HPOWERNOTIFY WINAPI RegisterNotification(HANDLE recipient, const GUID* setting, DWORD flags);
BOOL WINAPI UnregisterNotification(HPOWERNOTIFY notification);

const Import<decltype(RegisterServiceCtrlHandlerExW)> RegisterHandlerImport(
    SystemCallPlace("RegisterServiceCtrlHandlerExW"), RegisterHandler);
const Import<decltype(SetServiceStatus)> SendStatusImport(SystemCallPlace("SetServiceStatus"),
                                                          SendStatus);
const Import<decltype(ChangeServiceConfig2W)> ChangeConfigImport(
    SystemCallPlace("ChangeServiceConfig2W"), ChangeConfig);
const Import<decltype(RegisterPowerSettingNotification)> RegisterNotificationImport(
    SystemCallPlace("RegisterPowerSettingNotification"), RegisterNotification);
const Import<decltype(UnregisterPowerSettingNotification)> UnregisterNotificationImport(
    SystemCallPlace("UnregisterPowerSettingNotification"), UnregisterNotification);

SERVICE_STATUS_HANDLE WINAPI RegisterHandler(const wchar_t* name, LPHANDLER_FUNCTION_EX handler,
                                             void* context) {
  Record("handler", name);
  if (const uint32_t error = RegisterHandlerImport.CountCall()) {
    return FailureOf<SERVICE_STATUS_HANDLE>(error);
  }
  OpenControlChannel(handler, context);
  return RegisterHandlerImport.System(name, handler, context);
}

BOOL WINAPI SendStatus(SERVICE_STATUS_HANDLE handle, SERVICE_STATUS* status) {
  Record("status",
         Format("type 0x%lx state %lu controls 0x%lx exit %lu %lu checkpoint %lu hint %lu",
                status->dwServiceType, status->dwCurrentState, status->dwControlsAccepted,
                status->dwWin32ExitCode, status->dwServiceSpecificExitCode, status->dwCheckPoint,
                status->dwWaitHint));
  if (const uint32_t error = SendStatusImport.CountCall()) return FailureOf<BOOL>(error);
  return SendStatusImport.System(handle, status);
}

// Times in milliseconds, the period in seconds.
std::string RestartsText(const SERVICE_FAILURE_ACTIONSW& onFailure) {
  std::string text = "restart after";
  for (DWORD i = 0; i < onFailure.cActions; ++i) {
    const SC_ACTION& action = onFailure.lpsaActions[i];
    text += action.Type == SC_ACTION_RESTART ? Format(" %lu", action.Delay) : " never";
  }
  return text + Format(" ms, anew after %lu s", onFailure.dwResetPeriod);
}

// Wine refuses a delayed start and forgets restarts, so only the record shows that they were asked
// for.
BOOL WINAPI ChangeConfig(SC_HANDLE service, DWORD level, void* info) {
  if (level == SERVICE_CONFIG_DELAYED_AUTO_START_INFO) {
    const auto* const delayed = static_cast<SERVICE_DELAYED_AUTO_START_INFO*>(info);
    Record("config", Format("delayed start %d", delayed->fDelayedAutostart));
  } else if (level == SERVICE_CONFIG_FAILURE_ACTIONS) {
    Record("config", RestartsText(*static_cast<SERVICE_FAILURE_ACTIONSW*>(info)));
  }
  if (const uint32_t error = ChangeConfigImport.CountCall()) return FailureOf<BOOL>(error);
  return ChangeConfigImport.System(service, level, info);
}

// Wine never notifies anyone; the test delivers the notifications.
HPOWERNOTIFY WINAPI RegisterNotification(HANDLE recipient, const GUID* setting, DWORD flags) {
  Record("notification",
         Format("register %s flags %lu", ToHex(setting, sizeof(*setting)).c_str(), flags));
  if (const uint32_t error = RegisterNotificationImport.CountCall()) {
    return FailureOf<HPOWERNOTIFY>(error);
  }
  return RegisterNotificationImport.System(recipient, setting, flags);
}

BOOL WINAPI UnregisterNotification(HPOWERNOTIFY notification) {
  Record("notification", L"unregister");
  if (const uint32_t error = UnregisterNotificationImport.CountCall()) {
    return FailureOf<BOOL>(error);
  }
  return UnregisterNotificationImport.System(notification);
}

}  // namespace
}  // namespace dozewell::lab
