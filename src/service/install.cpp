#include "service/install.h"

#include <string>

#include "base/file.h"
#include "diagnostics/event_writer.h"
#include "service/service_host.h"
#include "service/service_manager.h"

namespace dozewell {
namespace {

constexpr wchar_t kDescription[] = L"Brevan dozewell service";
constexpr wchar_t kManagerNotOpened[] = L"OpenSCManager failed, error code = %d\n";
// In the current folder.
constexpr wchar_t kLogFile[] = L"DozewellService.log";

void ReportFailure(const wchar_t* text) { LogServiceEvent(text, LastSystemError(), kEventError); }

void DeleteInstalledService() {
  const ServiceHandle manager = OpenManager();
  if (manager == nullptr) return ReportFailure(kManagerNotOpened);
  const ServiceHandle service = OpenExistingService(manager.get(), kServiceName);
  if (service == nullptr) return ReportFailure(L"OpenService failed, error code = %d\n");
  if (!StopExistingService(service.get())) {
    ReportFailure(L"Failed to stop service! Error code = %d\n");
  }
  if (DeleteExistingService(service.get())) {
    LogServiceEvent(L"Service is uninstalled successfully.\n", 0, kEventSuccess);
  } else {
    ReportFailure(L"Failed to delete service! Error code = %d\n");
  }
}

}  // namespace

void InstallService() {
  const ServiceHandle manager = OpenManagerToCreate();
  if (manager == nullptr) return ReportFailure(kManagerNotOpened);
  // Quoted, since the path may hold blanks.
  const std::wstring imagePath = L"\"" + ModulePath() + L"\"";
  const ServiceHandle service = CreateOwnService(manager.get(), kServiceName, imagePath.c_str());
  if (service == nullptr) return ReportFailure(L"Failed to create service, error code = %d\n");
  LogServiceEvent(L"Service is installed successfully.\n", 0, kEventSuccess);
  SetServiceDescription(service.get(), kDescription);
  SetDelayedAutoStart(service.get());
  if (!StartExistingService(service.get())) {
    ReportFailure(L"Failed to start service! Error code = %d\n");
  }
}

void UninstallService() {
  DeleteInstalledService();
  RemoveFile(kLogFile);
}

}  // namespace dozewell
