#include <windows.h>

#include "service/service_host.h"
#include "setup/own_service.h"
#include "setup/system_error.h"

namespace dozewell::setup {

ServiceHandle OpenOwnService() {
  const ServiceHandle manager = OpenManager();
  ServiceHandle service;
  if (manager != nullptr) service = OpenExistingService(manager.get(), kServiceName);
  if (service == nullptr && LastSystemError() != ERROR_SERVICE_DOES_NOT_EXIST) {
    throw SystemError("the service cannot be opened", LastSystemError());
  }
  return service;
}

}  // namespace dozewell::setup
