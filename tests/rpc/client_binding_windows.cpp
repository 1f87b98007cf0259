#include <rpc.h>
#include <rpcndr.h>
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>

#include "rpc/client_binding.h"
#include "rpc/pipe_name.h"

namespace dozewell {
namespace {

// The runtime only reads its texts but declares them without const.
unsigned short* RpcText(std::wstring& text) {
  return reinterpret_cast<unsigned short*>(text.data());
}

LONG WINAPI EndProgram(EXCEPTION_POINTERS* exception) {
  const DWORD status = exception->ExceptionRecord->ExceptionCode;
  std::printf("a call ended with %lu\n", status);
  std::fflush(stdout);
  TerminateProcess(GetCurrentProcess(), status);
  return EXCEPTION_EXECUTE_HANDLER;
}

}  // namespace

void* BindToPipe(const wchar_t* endpoint) {
  std::wstring protocol = kRpcProtocol;
  std::wstring pipe = endpoint;
  unsigned short* text = nullptr;
  RPC_BINDING_HANDLE binding = nullptr;
  if (RpcStringBindingComposeW(nullptr, RpcText(protocol), nullptr, RpcText(pipe), nullptr,
                               &text) != RPC_S_OK ||
      RpcBindingFromStringBindingW(text, &binding) != RPC_S_OK) {
    throw std::runtime_error("no binding");
  }
  RpcStringFreeW(&text);
  return binding;
}

void EndOnFailedCall() { SetUnhandledExceptionFilter(EndProgram); }

}  // namespace dozewell

extern "C" {

void* __RPC_USER MIDL_user_allocate(size_t size) { return std::malloc(size); }
void __RPC_USER MIDL_user_free(void* memory) { std::free(memory); }

}  // extern "C"
