#include "rpc/rpc_server.h"

#include <cstdint>
#include <cstdio>

#include "diagnostics/event_writer.h"
#include "rpc/rpc_runtime.h"
#include "settings/settings_store.h"

namespace dozewell {
namespace {

void ReportFailure(const wchar_t* text, uint32_t status) {
  if (status != 0) LogServiceEvent(text, status, kEventError);
}

}  // namespace

void StartRPCServer() {
  WriteSetting(L"ServiceStatus", 0);
  std::fputs("RPC server is listening...\n", stdout);
  std::fflush(stdout);
  ReportFailure(L"StartRPCServer: RpcMgmtWaitServerListen() failed!", WaitServerListen());
}

void StopRPCServer() {
  ReportFailure(L"StopRPCServer: RpcMgmtStopServerListening() failed!", StopServerListening());
}

}  // namespace dozewell
