#ifndef DOZEWELL_CTL_PIPE_SERVER_H_
#define DOZEWELL_CTL_PIPE_SERVER_H_

#include <cstdint>
#include <optional>

namespace dozewell::ctl {

// Connects to the service's pipe, unless that was done before, and stays connected until the
// program ends: a server that loses a client before it has seen it may wait for no other. For use
// before the service is called.
void ConnectToPipe();

// The process that served the pipe when it was connected to. Nothing when there was no such pipe,
// or the system does not tell.
std::optional<uint32_t> PipeServerProcess();

// The connection itself (a HANDLE), which may be asked for the pipe's access list; null without
// one.
void* PipeConnection();

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_PIPE_SERVER_H_
