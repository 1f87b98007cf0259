#include <windows.h>

#include <iterator>

#include "base/wall_clock.h"
#include "service/service_host.h"
#include "service/service_manager.h"
#include "setup/system_error.h"
#include "setup/system_steps.h"

namespace dozewell::setup {
namespace {

constexpr DWORD kMinuteMs = 60'000;

}  // namespace

void ConfigureService() {
  const ServiceHandle manager = OpenManager();
  const ServiceHandle service =
      manager == nullptr ? nullptr : OpenExistingService(manager.get(), kServiceName);
  if (service == nullptr) throw SystemError("the service cannot be opened", LastSystemError());

  SetDelayedAutoStart(service.get());
  SC_ACTION restarts[] = {{SC_ACTION_RESTART, 1 * kMinuteMs},
                          {SC_ACTION_RESTART, 5 * kMinuteMs},
                          {SC_ACTION_RESTART, 15 * kMinuteMs}};
  SERVICE_FAILURE_ACTIONSW onFailure = {};
  onFailure.dwResetPeriod = static_cast<DWORD>(kSecondsPerDay);
  onFailure.cActions = static_cast<DWORD>(std::size(restarts));
  onFailure.lpsaActions = restarts;
  if (ChangeServiceConfig2W(static_cast<SC_HANDLE>(service.get()), SERVICE_CONFIG_FAILURE_ACTIONS,
                            &onFailure) == 0) {
    throw SystemError("the service's restarts cannot be set", LastSystemError());
  }
}

}  // namespace dozewell::setup
