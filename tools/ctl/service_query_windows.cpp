#include <windows.h>

#include <vector>

#include "ctl/service_query.h"
#include "service/service_host.h"
#include "service/service_manager.h"

namespace dozewell::ctl {
namespace {

// A delayed start comes some minutes after the system's. Until then nobody has tried to start it.
bool AwaitsStart(SC_HANDLE service, const SERVICE_STATUS_PROCESS& status) {
  if (status.dwCurrentState != SERVICE_STOPPED ||
      status.dwWin32ExitCode != ERROR_SERVICE_NEVER_STARTED) {
    return false;
  }
  DWORD size = 0;
  QueryServiceConfigW(service, nullptr, 0, &size);
  std::vector<BYTE> memory(size);
  auto* const config = reinterpret_cast<QUERY_SERVICE_CONFIGW*>(memory.data());
  return QueryServiceConfigW(service, config, size, &size) != 0 &&
         config->dwStartType == SERVICE_AUTO_START;
}

}  // namespace

ServiceQuery QueryService() {
  const ServiceHandle manager(OpenSCManagerW(nullptr, nullptr, SC_MANAGER_CONNECT));
  if (!manager) return {GetLastError(), 0};
  const ServiceHandle service(OpenServiceW(static_cast<SC_HANDLE>(manager.get()), kServiceName,
                                           SERVICE_QUERY_STATUS | SERVICE_QUERY_CONFIG));
  if (!service) return {GetLastError(), 0};
  SERVICE_STATUS_PROCESS status = {};
  DWORD size = 0;
  if (QueryServiceStatusEx(static_cast<SC_HANDLE>(service.get()), SC_STATUS_PROCESS_INFO,
                           reinterpret_cast<BYTE*>(&status), sizeof(status), &size) == 0) {
    return {GetLastError(), 0};
  }
  return {0, status.dwCurrentState, status.dwProcessId,
          AwaitsStart(static_cast<SC_HANDLE>(service.get()), status)};
}

}  // namespace dozewell::ctl
