#ifndef DOZEWELL_RPC_PIPE_NAME_H_
#define DOZEWELL_RPC_PIPE_NAME_H_

namespace dozewell {

// Where the server listens and clients bind to, in the words of the RPC runtime.
inline constexpr wchar_t kRpcProtocol[] = L"ncacn_np";
inline constexpr wchar_t kRpcEndpoint[] = L"\\pipe\\Brevan_Dozewell_Service";

}  // namespace dozewell

#endif  // DOZEWELL_RPC_PIPE_NAME_H_
