#ifndef DOZEWELL_LAB_SHARED_SYSTEM_CALLS_H_
#define DOZEWELL_LAB_SHARED_SYSTEM_CALLS_H_

#include <cstddef>
#include <iterator>
#include <string_view>

#include "shared/machine_state.h"

namespace dozewell::lab {

// The functions of the system that are counted and can be made to fail. Their places here are those
// in MachineState::calls.
inline constexpr std::string_view kSystemCalls[] = {
    // Service control manager
    "StartServiceCtrlDispatcherW",
    "RegisterServiceCtrlHandlerExW",
    "SetServiceStatus",
    "OpenSCManagerW",
    "CreateServiceW",
    "OpenServiceW",
    "ControlService",
    "StartServiceW",
    "DeleteService",
    "ChangeServiceConfig2W",
    "SetConsoleCtrlHandler",
    // Event log and debugger
    "RegisterEventSourceW",
    "ReportEventW",
    "ClearEventLogW",
    "DeregisterEventSource",
    "OutputDebugStringW",
    // Time and threads
    "_time64",
    "_tzset",
    "GetSystemTimeAsFileTime",
    "GetTickCount64",
    "Sleep",
    "CreateThread",
    // Power
    "GetSystemPowerStatus",
    "RegisterPowerSettingNotification",
    "UnregisterPowerSettingNotification",
    "PowerGetActiveScheme",
    "PowerSetActiveScheme",
    "PowerReadACValueIndex",
    "PowerReadDCValueIndex",
    "PowerWriteACValueIndex",
    "PowerWriteDCValueIndex",
    "SetSuspendState",
    "CallNtPowerInformation",
    "CreateWaitableTimerW",
    "SetWaitableTimerEx",
    "CancelWaitableTimer",
    "SetupDiGetClassDevsW",
    "DeviceIoControl",
    // RPC server
    "RpcServerUseProtseqEpW",
    "RpcServerRegisterIf",
    "RpcServerRegisterAuthInfoW",
    "RpcServerListen",
    "RpcMgmtWaitServerListen",
    "RpcMgmtStopServerListening",
    // Settings and files
    "RegOpenKeyExW",
    "RegOpenKeyExA",
    "RegCreateKeyExW",
    "RegCreateKeyExA",
    "RegQueryValueExW",
    "RegQueryValueExA",
    "RegSetValueExW",
    "RegSetValueExA",
    "RegDeleteValueW",
    "SHGetKnownFolderPath",
    "SHCreateDirectoryExW",
    "_wfopen",
    "MoveFileExW",
    "DeleteFileW",
    "GetProcAddress",
};
static_assert(std::size(kSystemCalls) <= kMaxSystemCalls);

// The place of a name. A name that is not in the list does not compile.
consteval size_t SystemCallPlace(std::string_view name) {
  for (size_t place = 0; place < std::size(kSystemCalls); ++place) {
    if (kSystemCalls[place] == name) return place;
  }
  throw "no such call";
}

}  // namespace dozewell::lab

#endif  // DOZEWELL_LAB_SHARED_SYSTEM_CALLS_H_
