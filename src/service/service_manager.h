#ifndef DOZEWELL_SERVICE_SERVICE_MANAGER_H_
#define DOZEWELL_SERVICE_SERVICE_MANAGER_H_

#include <cstdint>
#include <memory>
#include <string>

namespace dozewell {

// The system's service control manager, as install and uninstall need it. A failure gives null
// or false, and LastSystemError tells why.

struct ServiceHandleCloser {
  void operator()(void* handle) const;
};
// Owns a handle of the manager or of a service.
using ServiceHandle = std::unique_ptr<void, ServiceHandleCloser>;

// The first may create services, the second has every right.
ServiceHandle OpenManagerToCreate();
ServiceHandle OpenManager();

// An automatically starting service in a process of its own, under the system's account.
ServiceHandle CreateOwnService(void* manager, const wchar_t* name, const wchar_t* imagePath);
ServiceHandle OpenExistingService(void* manager, const wchar_t* name);

void SetServiceDescription(void* service, const wchar_t* description);
void SetDelayedAutoStart(void* service);

bool StartExistingService(void* service);
// Does not wait until the service has stopped.
bool StopExistingService(void* service);
bool DeleteExistingService(void* service);

// The path of this program.
std::wstring ModulePath();

// The calling thread's error code of the last call that failed.
uint32_t LastSystemError();

}  // namespace dozewell

#endif  // DOZEWELL_SERVICE_SERVICE_MANAGER_H_
