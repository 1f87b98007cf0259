#ifndef DOZEWELL_RPC_RPC_SERVER_H_
#define DOZEWELL_RPC_RPC_SERVER_H_

namespace dozewell {

// Tells clients that the service listens and returns when StopRPCServer has been called. The
// service main thread. There is no procedure to be called yet.
void StartRPCServer();

// Ends StartRPCServer; a failure is reported to the event log. Any thread.
void StopRPCServer();

}  // namespace dozewell

#endif  // DOZEWELL_RPC_RPC_SERVER_H_
