#include <windows.h>

#include "base/system_handle.h"
#include "ctl/pipe_server.h"
#include "rpc/pipe_name.h"

namespace dozewell::ctl {
namespace {

SystemHandle connection;

// Whoever serves the pipe learns no more of the caller than by a call.
HANDLE OpenPipe(const wchar_t* path) {
  return CreateFileW(path, GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                     SECURITY_SQOS_PRESENT | SECURITY_IDENTIFICATION, nullptr);
}

}  // namespace

void ConnectToPipe() {
  constexpr DWORD kBusyMs = 10'000;
  if (connection) return;
  const std::wstring path = std::wstring(L"\\\\.") + kRpcEndpoint;
  HANDLE opened = OpenPipe(path.c_str());
  // The server takes one client after the other.
  if (opened == INVALID_HANDLE_VALUE && GetLastError() == ERROR_PIPE_BUSY &&
      WaitNamedPipeW(path.c_str(), kBusyMs) != 0) {
    opened = OpenPipe(path.c_str());
  }
  if (opened == INVALID_HANDLE_VALUE) return;
  connection.reset(opened);
  // The calls need a connection of their own.
  WaitNamedPipeW(path.c_str(), kBusyMs);
}

std::optional<uint32_t> PipeServerProcess() {
  ULONG process = 0;
  if (!connection || GetNamedPipeServerProcessId(connection.get(), &process) == 0 || process == 0) {
    return std::nullopt;
  }
  return process;
}

void* PipeConnection() { return connection.get(); }

}  // namespace dozewell::ctl
