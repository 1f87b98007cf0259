#ifndef DOZEWELL_CTL_PIPE_SERVER_H_
#define DOZEWELL_CTL_PIPE_SERVER_H_

#include <cstdint>
#include <optional>

namespace dozewell::ctl {

// The process that serves the service's pipe at the moment. Nothing when there is no such pipe, or
// the system does not tell.
std::optional<uint32_t> PipeServerProcess();

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_PIPE_SERVER_H_
