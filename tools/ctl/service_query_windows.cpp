#include <windows.h>

#include "ctl/service_query.h"
#include "service/service_host.h"
#include "service/service_manager.h"

namespace dozewell::ctl {

ServiceQuery QueryService() {
  const ServiceHandle manager(OpenSCManagerW(nullptr, nullptr, SC_MANAGER_CONNECT));
  if (!manager) return {GetLastError(), 0};
  const ServiceHandle service(
      OpenServiceW(static_cast<SC_HANDLE>(manager.get()), kServiceName, SERVICE_QUERY_STATUS));
  if (!service) return {GetLastError(), 0};
  SERVICE_STATUS_PROCESS status = {};
  DWORD size = 0;
  if (QueryServiceStatusEx(static_cast<SC_HANDLE>(service.get()), SC_STATUS_PROCESS_INFO,
                           reinterpret_cast<BYTE*>(&status), sizeof(status), &size) == 0) {
    return {GetLastError(), 0};
  }
  return {0, status.dwCurrentState, status.dwProcessId};
}

}  // namespace dozewell::ctl
