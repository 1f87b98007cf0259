#include <rpc.h>
#include <windows.h>

#include "dozewell_rpc.h"
#include "rpc/pipe_name.h"
#include "rpc/rpc_runtime.h"

namespace dozewell {
namespace {

constexpr unsigned int kMaxCalls = 1234;
constexpr unsigned int kMinCallThreads = 1;

// The runtime takes texts as if it changed them, which it does not.
unsigned short* RpcText(const wchar_t* text) {
  return reinterpret_cast<unsigned short*>(const_cast<wchar_t*>(text));
}

uint32_t StatusOf(RPC_STATUS status) { return static_cast<uint32_t>(status); }

}  // namespace

uint32_t UseServerEndpoint() {
  return StatusOf(
      RpcServerUseProtseqEpW(RpcText(kRpcProtocol), kMaxCalls, RpcText(kRpcEndpoint), nullptr));
}

uint32_t RegisterServerInterface() {
  return StatusOf(RpcServerRegisterIf(Serve_DozewellControl_v1_0_s_ifspec, nullptr, nullptr));
}

uint32_t RegisterServerAuthentication() {
  return StatusOf(RpcServerRegisterAuthInfoW(nullptr, RPC_C_AUTHN_WINNT, nullptr, nullptr));
}

uint32_t ListenForCalls() { return StatusOf(RpcServerListen(kMinCallThreads, kMaxCalls, TRUE)); }

uint32_t WaitServerListen() { return StatusOf(RpcMgmtWaitServerListen()); }

uint32_t StopServerListening() { return StatusOf(RpcMgmtStopServerListening(nullptr)); }

}  // namespace dozewell
