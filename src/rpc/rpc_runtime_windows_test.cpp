#include <doctest/doctest.h>
#include <rpc.h>
#include <windows.h>

#include <cstdint>
#include <string>

#include "dozewell_rpc.h"
#include "rpc/rpc_runtime.h"
#include "support/calls.h"
#include "support/system_calls_windows.h"

namespace dozewell {

using namespace support;

TEST_CASE("the RPC runtime is told the pipe, the interface, the authentication and the limits") {
  struct Row {
    uint32_t (*call)();
    std::string expected;
  };
  const Row rows[] = {
      {UseServerEndpoint, SystemCall("RpcServerUseProtseqEpW", L"ncacn_np", 1234,
                                     L"\\pipe\\Brevan_Dozewell_Service", nullptr)},
      {RegisterServerInterface,
       SystemCall("RpcServerRegisterIf", Serve_DozewellControl_v1_0_s_ifspec, nullptr, nullptr)},
      {RegisterServerAuthentication,
       SystemCall("RpcServerRegisterAuthInfoW", nullptr, RPC_C_AUTHN_WINNT, nullptr, nullptr)},
      {ListenForCalls, SystemCall("RpcServerListen", 1, 1234, TRUE)},
      {WaitServerListen, SystemCall("RpcMgmtWaitServerListen")},
      {StopServerListening, SystemCall("RpcMgmtStopServerListening", nullptr)},
  };
  void* registered = nullptr;
  for (const RPC_STATUS status : {RPC_STATUS{RPC_S_OK}, RPC_STATUS{RPC_S_INVALID_BINDING}}) {
    const ImportStub<"RpcServerUseProtseqEpW", decltype(RpcServerUseProtseqEpW)> use{status};
    const ImportStub<"RpcServerRegisterIf", decltype(RpcServerRegisterIf)> registerInterface{
        [&](void* interfaceHandle, UUID*, void*) {
          registered = interfaceHandle;
          return status;
        }};
    const ImportStub<"RpcServerRegisterAuthInfoW", decltype(RpcServerRegisterAuthInfoW)>
        authenticate{status};
    const ImportStub<"RpcServerListen", decltype(RpcServerListen)> listen{status};
    const ImportStub<"RpcMgmtWaitServerListen", decltype(RpcMgmtWaitServerListen)> wait{status};
    const ImportStub<"RpcMgmtStopServerListening", decltype(RpcMgmtStopServerListening)> stop{
        status};
    for (const Row& row : rows) {
      CHECK(row.call() == static_cast<uint32_t>(status));
      CHECK(TakeSystemCalls() == Calls{row.expected});
    }
    CHECK(registered == Serve_DozewellControl_v1_0_s_ifspec);
  }
}

}  // namespace dozewell
