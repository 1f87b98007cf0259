#include "ctl/stranger.h"

#include <cstdint>
#include <optional>
#include <string>

#include "ctl/pipe_server.h"
#include "ctl/service_calls.h"
#include "ctl/service_query.h"

namespace dozewell::ctl {

void WarnOfStranger(const Console& console) {
  if (!HasCalledService()) return;
  const std::optional<uint32_t> server = PipeServerProcess();
  const ServiceQuery service = QueryService();
  // Without an installed service there is nothing to compare with.
  if (!server || service.error != 0 || service.process == *server) return;
  console.warn("warning: process " + std::to_string(*server) +
               " answers in the service's place; unless it is DozewellService -local in a console, "
               "do not trust it");
}

}  // namespace dozewell::ctl
