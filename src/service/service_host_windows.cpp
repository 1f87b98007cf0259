#include <windows.h>

#include <cstring>

#include "service/control_handler.h"
#include "service/service_host.h"
#include "service/service_main.h"

namespace dozewell {
namespace {

SERVICE_STATUS_HANDLE ServiceStatusHandle = nullptr;

DWORD WINAPI Handler(DWORD control, DWORD eventType, void* eventData, void*) {
  return ServiceCtrlHandler(control, eventType, eventData);
}

// Longer than the system waits for a handler by itself.
constexpr DWORD kLongestWaitMs = 20000;

// The events after which the system ends the process as soon as the handler returns.
bool EndsProcess(DWORD type) {
  return type == CTRL_CLOSE_EVENT || type == CTRL_LOGOFF_EVENT || type == CTRL_SHUTDOWN_EVENT;
}

BOOL WINAPI ConsoleHandler(DWORD type) {
  const bool handled = ConsoleCtrlHandler(type);
  // When ServiceMain has returned, the process ends, and this thread with it.
  if (EndsProcess(type)) Sleep(kLongestWaitMs);
  return handled ? TRUE : FALSE;
}

void WINAPI Main(DWORD, wchar_t**) { ServiceMain(); }

uint32_t ErrorOf(bool succeeded) { return succeeded ? 0 : GetLastError(); }

}  // namespace

uint32_t RunServiceDispatcher() {
  // The system takes the name as if it changed it, which it does not.
  auto* const name = const_cast<wchar_t*>(kServiceName);
  const SERVICE_TABLE_ENTRYW table[] = {{name, Main}, {nullptr, nullptr}};
  return ErrorOf(StartServiceCtrlDispatcherW(table) != 0);
}

void InstallConsoleHandler() { SetConsoleCtrlHandler(ConsoleHandler, TRUE); }

uint32_t RegisterControlHandler() {
  ServiceStatusHandle = RegisterServiceCtrlHandlerExW(kServiceName, Handler, nullptr);
  return ErrorOf(ServiceStatusHandle != nullptr);
}

uint32_t SendServiceStatus(const ServiceStatusRecord& status) {
  SERVICE_STATUS record = {};
  record.dwServiceType = SERVICE_WIN32;
  record.dwCurrentState = status.state;
  record.dwControlsAccepted = SERVICE_ACCEPT_STOP | SERVICE_ACCEPT_PAUSE_CONTINUE |
                              SERVICE_ACCEPT_SHUTDOWN | SERVICE_ACCEPT_POWEREVENT |
                              SERVICE_ACCEPT_SESSIONCHANGE;
  record.dwWaitHint = status.waitHintMs;
  return ErrorOf(SetServiceStatus(ServiceStatusHandle, &record) != 0);
}

void* RegisterIdleNotification() {
  GUID setting;
  static_assert(sizeof(setting) == sizeof(kIdleBackgroundTask));
  std::memcpy(&setting, kIdleBackgroundTask.data(), sizeof(setting));
  return RegisterPowerSettingNotification(ServiceStatusHandle, &setting,
                                          DEVICE_NOTIFY_SERVICE_HANDLE);
}

void UnregisterIdleNotification(void* notification) {
  UnregisterPowerSettingNotification(notification);
}

}  // namespace dozewell
