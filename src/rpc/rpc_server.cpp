#include "rpc/rpc_server.h"

#include <cstdint>
#include <cstdio>
#include <mutex>

#include "base/lock.h"
#include "diagnostics/event_writer.h"
#include "rpc/rpc_runtime.h"
#include "settings/setting_names.h"
#include "settings/settings_store.h"

namespace dozewell {
namespace {

// Keeps a stop from coming while the server begins to listen: one of the two stops it, never both.
Lock& ListeningLock = *new Lock;

uint32_t BeginListening() {
  const std::lock_guard guard(ListeningLock);
  const uint32_t status = ListenForCalls();
  if (status == 0 && RPCStopRequested) StopServerListening();
  return status;
}

struct Step {
  uint32_t (*take)();
  const wchar_t* failureText;
};

constexpr Step kStartSteps[] = {
    {UseServerEndpoint, L"RpcServerUseProtseqEp returned 0x%x\n"},
    {RegisterServerInterface, L"RpcServerRegisterIf returned 0x%x\n"},
    {RegisterServerAuthentication, L"StartRPCServer: RpcServerRegisterAuthInfo() failed!"},
    {BeginListening, L"RpcServerListen returned: 0x%x\n"},
};
constexpr Step kWait = {WaitServerListen, L"StartRPCServer: RpcMgmtWaitServerListen() failed!"};
constexpr Step kStop = {StopServerListening,
                        L"StopRPCServer: RpcMgmtStopServerListening() failed!"};

bool Take(const Step& step) {
  const uint32_t status = step.take();
  if (status != 0) LogServiceEvent(step.failureText, status, kEventError);
  return status == 0;
}

}  // namespace

void StartRPCServer() {
  for (const Step& step : kStartSteps) {
    if (!Take(step)) return;
  }
  WriteSetting(kServiceStatusName, 0);
  std::fputs("RPC server is listening...\n", stdout);
  std::fflush(stdout);
  Take(kWait);
  RPCStopRequested = false;
}

void StopRPCServer() {
  const std::lock_guard guard(ListeningLock);
  RPCStopRequested = true;
  Take(kStop);
}

}  // namespace dozewell
