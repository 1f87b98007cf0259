#ifndef DOZEWELL_RPC_RPC_SERVER_H_
#define DOZEWELL_RPC_RPC_SERVER_H_

namespace dozewell {

// Serves the control interface until StopRPCServer has been called. A step that fails is reported
// to the event log and ends the start at once. The service main thread.
void StartRPCServer();

// Has StartRPCServer return; a failure is reported to the event log. Any thread.
void StopRPCServer();

}  // namespace dozewell

#endif  // DOZEWELL_RPC_RPC_SERVER_H_
