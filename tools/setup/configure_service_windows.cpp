#include <windows.h>
// After windows.h, which it needs.
#include <sddl.h>

#include <iterator>

#include "base/wall_clock.h"
#include "setup/local_memory.h"
#include "setup/own_service.h"
#include "setup/service_command.h"
#include "setup/system_error.h"
#include "setup/system_steps.h"

namespace dozewell::setup {
namespace {

constexpr DWORD kMinuteMs = 60'000;

// The system's defaults for a service, except that users who are signed in, and services, may not
// send it controls of their own making. Each of those writes an event, so whoever may send them can
// fill the event log.
constexpr wchar_t kAccess[] =
    L"D:(A;;CCLCSWRPWPDTLOCRRC;;;SY)(A;;CCDCLCSWRPWPDTLOCRSDRCWDWO;;;BA)(A;;CCLCSWLORC;;;IU)"
    L"(A;;CCLCSWLORC;;;SU)";

void Require(bool succeeded, const char* failure) {
  if (!succeeded) throw SystemError(failure, GetLastError());
}

// Of a path with blanks that is not in quotation marks, the system tries what is before each blank
// first.
void QuotePath(SC_HANDLE service) {
  const std::wstring command = CommandOf(service);
  if (command.starts_with(L'"')) return;
  const std::wstring quoted = L'"' + command + L'"';
  Require(ChangeServiceConfigW(service, SERVICE_NO_CHANGE, SERVICE_NO_CHANGE, SERVICE_NO_CHANGE,
                               quoted.c_str(), nullptr, nullptr, nullptr, nullptr, nullptr,
                               nullptr) != 0,
          "the service's path cannot be set");
}

void CloseUserControls(SC_HANDLE service) {
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  Require(ConvertStringSecurityDescriptorToSecurityDescriptorW(kAccess, SDDL_REVISION_1,
                                                               &descriptor, nullptr) != 0,
          "access rights cannot be made");
  const LocalMemory freedAtEnd(descriptor);
  Require(SetServiceObjectSecurity(service, DACL_SECURITY_INFORMATION, descriptor) != 0,
          "the service's access rights cannot be set");
}

void SetRestarts(SC_HANDLE service) {
  SC_ACTION restarts[] = {{SC_ACTION_RESTART, 1 * kMinuteMs},
                          {SC_ACTION_RESTART, 5 * kMinuteMs},
                          {SC_ACTION_RESTART, 15 * kMinuteMs}};
  SERVICE_FAILURE_ACTIONSW onFailure = {};
  onFailure.dwResetPeriod = static_cast<DWORD>(kSecondsPerDay);
  onFailure.cActions = static_cast<DWORD>(std::size(restarts));
  onFailure.lpsaActions = restarts;
  Require(ChangeServiceConfig2W(service, SERVICE_CONFIG_FAILURE_ACTIONS, &onFailure) != 0,
          "the service's restarts cannot be set");
}

}  // namespace

void ConfigureService() {
  const ServiceHandle opened = OpenOwnService();
  if (opened == nullptr) {
    throw SystemError("the service cannot be opened", ERROR_SERVICE_DOES_NOT_EXIST);
  }
  const auto service = static_cast<SC_HANDLE>(opened.get());
  QuotePath(service);
  CloseUserControls(service);
  SetDelayedAutoStart(service);
  SetRestarts(service);
}

}  // namespace dozewell::setup
