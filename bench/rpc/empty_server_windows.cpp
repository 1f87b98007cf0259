#include <rpc.h>
#include <windows.h>

#include "empty_rpc.h"
#include "rpc/empty_server.h"

namespace dozewell {

const wchar_t kEmptyPipe[] = L"\\pipe\\Dozewell_Empty";

int ServeEmpty() {
  wchar_t protocol[] = L"ncacn_np";
  wchar_t pipe[] = L"\\pipe\\Dozewell_Empty";
  constexpr unsigned int kMaxCalls = 1234;
  const bool serves =
      RpcServerUseProtseqEpW(reinterpret_cast<unsigned short*>(protocol), kMaxCalls,
                             reinterpret_cast<unsigned short*>(pipe), nullptr) == RPC_S_OK &&
      RpcServerRegisterIf(Serve_EmptyInterface_v1_0_s_ifspec, nullptr, nullptr) == RPC_S_OK &&
      RpcServerListen(1, kMaxCalls, FALSE) == RPC_S_OK;
  return serves ? 0 : 1;
}

}  // namespace dozewell

extern "C" boolean Serve_EmptyCall() { return 1; }
