#ifndef DOZEWELL_RPC_RPC_SERVER_H_
#define DOZEWELL_RPC_RPC_SERVER_H_

#include <atomic>

namespace dozewell {

// Remembers a stop that comes after the service has reported that it runs and before the server
// listens; the server then stops at once.
inline std::atomic<bool> RPCStopRequested{false};

// Serves the control interface until StopRPCServer has been called. A step that fails is reported
// to the event log and ends the start at once. The service main thread.
void StartRPCServer();

// Makes StartRPCServer return; a failure is reported to the event log. Any thread.
void StopRPCServer();

}  // namespace dozewell

#endif  // DOZEWELL_RPC_RPC_SERVER_H_
