#ifndef DOZEWELL_RPC_RPC_SERVER_H_
#define DOZEWELL_RPC_RPC_SERVER_H_

#include <atomic>

namespace dozewell {

// A stop may come between the service's telling that it runs and the server's listening; the server
// then stops at once.
inline std::atomic<bool> RPCStopRequested{false};

// Serves the control interface until StopRPCServer has been called. A step that fails is reported
// to the event log and ends the start at once. The service main thread.
void StartRPCServer();

// Has StartRPCServer return; a failure is reported to the event log. Any thread.
void StopRPCServer();

}  // namespace dozewell

#endif  // DOZEWELL_RPC_RPC_SERVER_H_
