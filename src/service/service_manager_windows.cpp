#include <windows.h>

#include "service/service_manager.h"

namespace dozewell {
namespace {

SC_HANDLE HandleOf(void* handle) { return static_cast<SC_HANDLE>(handle); }

}  // namespace

void ServiceHandleCloser::operator()(void* handle) const { CloseServiceHandle(HandleOf(handle)); }

ServiceHandle OpenManagerToCreate() {
  return ServiceHandle(OpenSCManagerW(nullptr, nullptr, SC_MANAGER_CREATE_SERVICE));
}

ServiceHandle OpenManager() {
  return ServiceHandle(OpenSCManagerW(nullptr, nullptr, SC_MANAGER_ALL_ACCESS));
}

ServiceHandle CreateOwnService(void* manager, const wchar_t* name, const wchar_t* imagePath) {
  return ServiceHandle(CreateServiceW(HandleOf(manager), name, name, SERVICE_ALL_ACCESS,
                                      SERVICE_WIN32_OWN_PROCESS, SERVICE_AUTO_START,
                                      SERVICE_ERROR_NORMAL, imagePath, nullptr, nullptr, nullptr,
                                      nullptr, nullptr));
}

ServiceHandle OpenExistingService(void* manager, const wchar_t* name) {
  return ServiceHandle(OpenServiceW(HandleOf(manager), name, SERVICE_ALL_ACCESS));
}

void SetServiceDescription(void* service, const wchar_t* description) {
  std::wstring text = description;
  SERVICE_DESCRIPTIONW record = {text.data()};
  ChangeServiceConfig2W(HandleOf(service), SERVICE_CONFIG_DESCRIPTION, &record);
}

void SetDelayedAutoStart(void* service) {
  SERVICE_DELAYED_AUTO_START_INFO record = {TRUE};
  ChangeServiceConfig2W(HandleOf(service), SERVICE_CONFIG_DELAYED_AUTO_START_INFO, &record);
}

bool StartExistingService(void* service) {
  return StartServiceW(HandleOf(service), 0, nullptr) != 0;
}

bool StopExistingService(void* service) {
  SERVICE_STATUS status;
  return ControlService(HandleOf(service), SERVICE_CONTROL_STOP, &status) != 0;
}

bool DeleteExistingService(void* service) { return DeleteService(HandleOf(service)) != 0; }

std::wstring ModulePath() {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  path[MAX_PATH - 1] = 0;
  return path;
}

uint32_t LastSystemError() { return GetLastError(); }

}  // namespace dozewell
