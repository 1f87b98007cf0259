#ifndef DOZEWELL_RPC_RPC_RUNTIME_H_
#define DOZEWELL_RPC_RPC_RUNTIME_H_

#include <cstdint>

namespace dozewell {

// The system's RPC runtime, serving the control interface. Results are RPC statuses, 0 for
// success. The steps of starting up, in their order:

// Opens the named pipe, with the system's own security for it.
uint32_t UseServerEndpoint();
uint32_t RegisterServerInterface();
// Lets clients authenticate themselves by the system's own means.
uint32_t RegisterServerAuthentication();
// Begins to serve calls, on threads of the runtime's, and returns at once.
uint32_t ListenForCalls();
// Returns once listening has been stopped and the calls under way have ended.
uint32_t WaitServerListen();

// Any thread.
uint32_t StopServerListening();

}  // namespace dozewell

#endif  // DOZEWELL_RPC_RPC_RUNTIME_H_
