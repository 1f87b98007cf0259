#ifndef DOZEWELL_RPC_RPC_RUNTIME_H_
#define DOZEWELL_RPC_RPC_RUNTIME_H_

#include <cstdint>

namespace dozewell {

// The system's RPC runtime. Results are RPC statuses, 0 for success. Any thread.

// Returns once listening has been stopped.
uint32_t WaitServerListen();

uint32_t StopServerListening();

}  // namespace dozewell

#endif  // DOZEWELL_RPC_RPC_RUNTIME_H_
