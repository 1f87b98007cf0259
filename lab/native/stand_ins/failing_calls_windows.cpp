#include <windows.h>
// Need windows.h before them.
#include <rpc.h>
#include <shlobj.h>
#include <stdio.h>
#include <stdlib.h>

#include "stand_ins/failing_import.h"

namespace dozewell::lab {

// The C runtime's functions leave it in two places.
void SetError(uint32_t error) {
  SetLastError(error);
  _doserrno = error;
}

// A test can count these calls and make them fail; otherwise the system's own function answers.
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
