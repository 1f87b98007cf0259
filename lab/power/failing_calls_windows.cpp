#include <windows.h>
// After windows.h, which they need.
#include <rpc.h>
#include <shlobj.h>
#include <stdio.h>

#include "power/failing_import.h"

namespace dozewell::lab {

void SetError(uint32_t error) { SetLastError(error); }

// Calls that a test can count and fail, and that are the system's own otherwise.
#define FAILING(name) template class FailingImport<SystemCallPlace(#name), decltype(name)>
FAILING(StartServiceCtrlDispatcherW);
FAILING(OpenSCManagerW);
FAILING(CreateServiceW);
FAILING(OpenServiceW);
FAILING(ControlService);
FAILING(StartServiceW);
FAILING(DeleteService);
FAILING(RpcServerUseProtseqEpW);
FAILING(RpcServerRegisterIf);
FAILING(RpcServerRegisterAuthInfoW);
FAILING(RpcServerListen);
FAILING(RpcMgmtWaitServerListen);
FAILING(RpcMgmtStopServerListening);
FAILING(RegOpenKeyExW);
FAILING(RegOpenKeyExA);
FAILING(RegCreateKeyExW);
FAILING(RegCreateKeyExA);
FAILING(SHGetKnownFolderPath);
FAILING(SHCreateDirectoryExW);
FAILING(_wfopen);
FAILING(MoveFileExW);
FAILING(DeleteFileW);
#undef FAILING

}  // namespace dozewell::lab
