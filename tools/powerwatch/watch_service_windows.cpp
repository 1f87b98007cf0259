#include <windows.h>
// After windows.h, which it needs.
#include <wtsapi32.h>

#include <array>
#include <cstring>
#include <exception>
#include <mutex>
#include <optional>
#include <string>

#include "base/lock.h"
#include "powerwatch/reading.h"
#include "powerwatch/service_state.h"
#include "powerwatch/watch_file.h"
#include "powerwatch/watch_folder.h"
#include "powerwatch/watch_log.h"
#include "powerwatch/watch_names.h"
#include "powerwatch/watch_service.h"
#include "service/control_handler.h"
#include "service/service_host.h"

namespace dozewell::powerwatch {
namespace {

// What the system's threads share. The handler and the main routine hold the lock whenever they
// touch it.
struct RunningWatch {
  Lock lock;
  SERVICE_STATUS_HANDLE status = nullptr;
  HANDLE ended = nullptr;  // an event
  uint32_t state = kServiceStartPending;
  uint32_t error = kNoError;
  std::optional<WatchFile> file;
  std::optional<WatchLog> log;  // of a watch that has begun and not ended
};

// Never destroyed, since a thread of the system may still call the handler when the process ends.
RunningWatch& watch = *new RunningWatch;

void SendStatus() {
  SERVICE_STATUS status = {};
  status.dwServiceType = SERVICE_WIN32_OWN_PROCESS;
  status.dwCurrentState = watch.state;
  status.dwControlsAccepted = SERVICE_ACCEPT_STOP | SERVICE_ACCEPT_PAUSE_CONTINUE |
                              SERVICE_ACCEPT_SHUTDOWN | SERVICE_ACCEPT_POWEREVENT |
                              SERVICE_ACCEPT_SESSIONCHANGE;
  status.dwWin32ExitCode = watch.error;
  SetServiceStatus(watch.status, &status);
}

std::string IdentifierOf(DWORD control, DWORD type, const void* data) {
  if (data == nullptr) return "";
  if (control == kControlPowerEvent && type == kPowerSettingChange) {
    std::array<uint8_t, 16> guid;
    std::memcpy(guid.data(), data, guid.size());
    return GuidText(guid);
  }
  if (control == kControlSessionChange) {
    return std::to_string(static_cast<const WTSSESSION_NOTIFICATION*>(data)->dwSessionId);
  }
  return "";
}

DWORD WINAPI Handler(DWORD control, DWORD type, void* data, void*) {
  const std::lock_guard guard(watch.lock);
  if (watch.log) {
    watch.error = watch.log->Add({control, type, IdentifierOf(control, type, data)}, ReadNow());
    watch.state = watch.error == kNoError ? StateAfter(control, watch.state) : kServiceStopPending;
  }
  SendStatus();
  if (watch.state == kServiceStopPending) SetEvent(watch.ended);
  return NO_ERROR;
}

uint32_t BeginLog() {
  try {
    uint32_t error = kNoError;
    watch.file.emplace(FindPlaces().file, error);
    if (error != kNoError) return error;
    watch.log.emplace(watch.file->Size(),
                      [](const std::string& text) { return watch.file->Append(text); });
    return watch.log->Begin(ReadNow());
  } catch (const std::exception&) {
    return ERROR_PATH_NOT_FOUND;
  }
}

// Whether it runs now.
bool Begin() {
  const std::lock_guard guard(watch.lock);
  watch.ended = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  watch.error = BeginLog();
  watch.status = RegisterServiceCtrlHandlerExW(kWatchServiceName, Handler, nullptr);
  const bool runs = watch.error == kNoError && watch.status != nullptr;
  if (runs) {
    watch.state = kServiceRunning;
    SendStatus();
  }
  return runs;
}

void WaitForEnd() {
  GUID setting;
  std::memcpy(&setting, kIdleBackgroundTask.data(), sizeof(setting));
  const HPOWERNOTIFY notification =
      RegisterPowerSettingNotification(watch.status, &setting, DEVICE_NOTIFY_SERVICE_HANDLE);
  WaitForSingleObject(watch.ended, INFINITE);
  if (notification != nullptr) UnregisterPowerSettingNotification(notification);
}

void End() {
  const std::lock_guard guard(watch.lock);
  watch.log.reset();
  watch.file.reset();
  watch.state = kServiceStopped;
  SendStatus();
}

void WINAPI Main(DWORD, wchar_t**) {
  if (Begin()) WaitForEnd();
  End();
}

}  // namespace

uint32_t ServeWatch() {
  // The system takes the name as if it changed it, which it does not.
  auto* const name = const_cast<wchar_t*>(kWatchServiceName);
  const SERVICE_TABLE_ENTRYW table[] = {{name, Main}, {nullptr, nullptr}};
  return StartServiceCtrlDispatcherW(table) != 0 ? NO_ERROR : GetLastError();
}

}  // namespace dozewell::powerwatch
