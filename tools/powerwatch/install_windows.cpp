#include <windows.h>

#include <exception>
#include <stdexcept>
#include <string>

#include "base/utf8.h"
#include "powerwatch/install.h"
#include "powerwatch/watch_folder.h"
#include "powerwatch/watch_names.h"
#include "service/service_manager.h"
#include "setup/system_error.h"

namespace dozewell::powerwatch {
namespace {

using setup::SystemError;

constexpr DWORD kLongestWaitMs = 30'000;
constexpr DWORD kPauseMs = 50;  // between two questions

[[noreturn]] void Fail(const char* what) { throw SystemError(what, LastSystemError()); }

ServiceHandle OpenManagerAsAdministrator() {
  ServiceHandle manager = OpenManager();
  if (manager == nullptr) {
    Fail("the service control manager cannot be opened, which an administrator can");
  }
  return manager;
}

// Null when there is none.
ServiceHandle OpenWatch(void* manager) {
  ServiceHandle service = OpenExistingService(manager, kWatchServiceName);
  if (service == nullptr && LastSystemError() != ERROR_SERVICE_DOES_NOT_EXIST) {
    Fail("the service cannot be opened");
  }
  return service;
}

ServiceHandle CreateWatch(void* manager, const std::wstring& program) {
  const std::wstring command = L'"' + program + L'"';
  ServiceHandle service(CreateServiceW(
      static_cast<SC_HANDLE>(manager), kWatchServiceName, kWatchServiceName, SERVICE_ALL_ACCESS,
      SERVICE_WIN32_OWN_PROCESS, SERVICE_AUTO_START, SERVICE_ERROR_NORMAL, command.c_str(), nullptr,
      nullptr, nullptr, L"NT AUTHORITY\\LocalService", nullptr));
  if (service == nullptr) Fail("the service cannot be created");
  return service;
}

// The account could otherwise shut the system down. The one privilege that is left lets it go
// through folders on the way to its own.
void TakePrivileges(void* service) {
  wchar_t kept[] = L"SeChangeNotifyPrivilege\0";
  SERVICE_REQUIRED_PRIVILEGES_INFOW privileges = {kept};
  if (ChangeServiceConfig2W(static_cast<SC_HANDLE>(service),
                            SERVICE_CONFIG_REQUIRED_PRIVILEGES_INFO, &privileges) == 0 &&
      GetLastError() != ERROR_INVALID_LEVEL) {
    Fail("the service's privileges cannot be taken from it");
  }
}

SERVICE_STATUS_PROCESS StatusOf(void* service) {
  SERVICE_STATUS_PROCESS status = {};
  DWORD size = 0;
  if (QueryServiceStatusEx(static_cast<SC_HANDLE>(service), SC_STATUS_PROCESS_INFO,
                           reinterpret_cast<BYTE*>(&status), sizeof(status), &size) == 0) {
    Fail("the service's state cannot be asked for");
  }
  return status;
}

// The service's status as soon as it is in one of two states, or when the longest wait is over.
SERVICE_STATUS_PROCESS AwaitState(void* service, DWORD wanted, DWORD alternative) {
  const ULONGLONG begin = GetTickCount64();
  for (;;) {
    const SERVICE_STATUS_PROCESS status = StatusOf(service);
    const DWORD state = status.dwCurrentState;
    if (state == wanted || state == alternative || GetTickCount64() - begin >= kLongestWaitMs) {
      return status;
    }
    Sleep(kPauseMs);
  }
}

// Waits until it runs, which it does only when it can write to its file.
void StartWatch(void* service) {
  if (!StartExistingService(service)) Fail("the service cannot be started");
  const SERVICE_STATUS_PROCESS status = AwaitState(service, SERVICE_RUNNING, SERVICE_STOPPED);
  if (status.dwCurrentState != SERVICE_RUNNING) {
    throw SystemError("the service does not stay on", status.dwWin32ExitCode);
  }
}

void StopWatch(void* service) {
  // A service that has stopped refuses.
  StopExistingService(service);
  if (AwaitState(service, SERVICE_STOPPED, SERVICE_STOPPED).dwCurrentState != SERVICE_STOPPED) {
    throw SystemError("the service does not stop", WAIT_TIMEOUT);
  }
}

// After an installation that failed, and for a reason that matters more than what fails here.
void Undo(void* service, const WatchPlaces& places) {
  try {
    if (service != nullptr) {
      DeleteExistingService(service);
      StopWatch(service);
    }
    DeleteFolder(places);
  } catch (const std::exception&) {
  }
}

bool IsThisProgram(const std::wstring& path) {
  const std::wstring own = ModulePath();
  return CompareStringOrdinal(own.c_str(), -1, path.c_str(), -1, TRUE) == CSTR_EQUAL;
}

}  // namespace

std::string InstallWatch() {
  const WatchPlaces places = FindPlaces();
  const ServiceHandle manager = OpenManagerAsAdministrator();
  if (OpenWatch(manager.get()) != nullptr) {
    throw SystemError("the service exists already", ERROR_SERVICE_EXISTS);
  }
  MakeFolder(places);
  ServiceHandle service;
  try {
    service = CreateWatch(manager.get(), places.program);
    SetServiceDescription(service.get(),
                          L"Writes down what Windows tells a service of sleep and power");
    TakePrivileges(service.get());
    StartWatch(service.get());
  } catch (...) {
    Undo(service.get(), places);
    throw;
  }
  return "Watching. It writes to " + NarrowToUtf8(places.file) + "\n";
}

std::string RemoveWatch() {
  const WatchPlaces places = FindPlaces();
  if (IsThisProgram(places.program)) {
    throw std::runtime_error(
        "this copy cannot delete itself; run the one that it was installed from");
  }
  const ServiceHandle manager = OpenManagerAsAdministrator();
  if (const ServiceHandle service = OpenWatch(manager.get())) {
    StopWatch(service.get());
    if (!DeleteExistingService(service.get())) Fail("the service cannot be deleted");
  }
  DeleteFolder(places);
  return "Removed, with all that it wrote.\n";
}

}  // namespace dozewell::powerwatch
