#include "ctl/unreachable_text.h"

#include <algorithm>
#include <iterator>

#include "service/service_host.h"

namespace dozewell::ctl {
namespace {

// Of the RPC runtime.
constexpr uint32_t kServerTooBusy = 1723;
constexpr uint32_t kCallFailed = 1726;

struct StateText {
  uint32_t state;
  const char* name;
  const char* advice;
};
constexpr StateText kStates[] = {
    {kServiceStopped, "stopped", "as administrator, net start DozewellService starts it"},
    {kServiceStartPending, "starting", "try again in a moment"},
    {kServiceStopPending, "stopping", "once it has, net start DozewellService starts it again"},
};

const StateText* FindState(uint32_t state) {
  const auto* const found = std::ranges::find(kStates, state, &StateText::state);
  return found == std::end(kStates) ? nullptr : found;
}

}  // namespace

std::string UnreachableText(uint32_t status, const ServiceQuery& service) {
  const std::string error = " (error " + std::to_string(status) + ")";
  if (status == kErrorAccessDenied) {
    return "the service does not let you in" + error + "; try it as administrator";
  }
  // A service that stops while calls are in flight gives this answer, too.
  if (status == kServerTooBusy && service.state != kServiceStopPending) {
    return "the service is too busy" + error + "; try again in a moment";
  }
  if (status == kCallFailed) {
    return "the service went away during the call" + error +
           ", which it may or may not have carried out; dozewellctl status shows which";
  }
  if (service.error == kErrorServiceMissing) {
    return "the service is not installed; its installer package installs it";
  }
  if (service.awaitsStart) {
    return "the service is still to start after the start of Windows; it does so by itself within "
           "some minutes, so do not start it by hand";
  }
  if (service.error == 0) {
    if (const StateText* const state = FindState(service.state)) {
      return std::string("the service is ") + state->name + "; " + state->advice;
    }
  }
  const std::string state = service.error == 0 ? "runs but does" : "does";
  return "the service " + state + " not answer" + error +
         "; its events may say why (dozewellctl status), and net stop and net start "
         "DozewellService "
         "restart it";
}

std::string ServiceStateText(const ServiceQuery& service) {
  if (service.error == kErrorServiceMissing) return "not installed";
  if (service.error != 0) return "not known (error " + std::to_string(service.error) + ")";
  if (service.state == kServiceRunning) return "running";
  if (service.state == kServicePaused) return "paused, which changes nothing of what it does";
  const StateText* const state = FindState(service.state);
  return state != nullptr ? state->name : "state " + std::to_string(service.state);
}

}  // namespace dozewell::ctl
