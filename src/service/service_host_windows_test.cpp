#include <doctest/doctest.h>
#include <rpc.h>
#include <windows.h>

#include <bit>
#include <cstdint>
#include <cstring>
#include <string>

#include "base/process_flags.h"
#include "rpc/rpc_server.h"
#include "service/control_handler.h"
#include "service/service_host.h"
#include "service/service_main.h"
#include "service/service_status.h"
#include "support/calls.h"
#include "support/captured_output.h"
#include "support/registry_windows.h"
#include "support/system_calls_windows.h"

namespace dozewell {

using namespace support;

namespace {

const auto kStatusHandle = std::bit_cast<SERVICE_STATUS_HANDLE>(uint64_t{0x300});
const auto kNotification = std::bit_cast<HPOWERNOTIFY>(uint64_t{0x400});

// {515C31D8-F734-163D-A0FD-11A08C91E8F1}
constexpr GUID kIdle = {
    0x515C31D8, 0xF734, 0x163D, {0xA0, 0xFD, 0x11, 0xA0, 0x8C, 0x91, 0xE8, 0xF1}};

// What running as a service takes of the system. The fields of a status follow its call: the type,
// the state, the controls accepted, two exit codes, the checkpoint and the wait hint.
struct HostStub {
  SERVICE_STATUS_HANDLE statusHandle = kStatusHandle;
  LPHANDLER_FUNCTION_EX handler = nullptr;
  ImportStub<"RegisterServiceCtrlHandlerExW", decltype(RegisterServiceCtrlHandlerExW)>
      registerHandler{[this](const wchar_t*, LPHANDLER_FUNCTION_EX function, void*) {
        handler = function;
        if (statusHandle == nullptr) SetLastError(ERROR_SERVICE_NOT_IN_EXE);
        return statusHandle;
      }};
  ImportStub<"SetServiceStatus", decltype(SetServiceStatus)> setStatus{
      [](SERVICE_STATUS_HANDLE handle, SERVICE_STATUS* status) {
        NoteSystemCall(SystemCall("  status", status->dwServiceType, status->dwCurrentState,
                                  status->dwControlsAccepted, status->dwWin32ExitCode,
                                  status->dwServiceSpecificExitCode, status->dwCheckPoint,
                                  status->dwWaitHint));
        if (handle == nullptr) SetLastError(ERROR_INVALID_HANDLE);
        return handle != nullptr ? TRUE : FALSE;
      }};
  ImportStub<"RegisterPowerSettingNotification", decltype(RegisterPowerSettingNotification)>
      registerNotification{kNotification};
  ImportStub<"UnregisterPowerSettingNotification", decltype(UnregisterPowerSettingNotification)>
      unregisterNotification{TRUE};
  ImportStub<"RpcServerUseProtseqEpW", decltype(RpcServerUseProtseqEpW)> useEndpoint{
      RPC_STATUS{RPC_S_DUPLICATE_ENDPOINT}};
  ImportStub<"RpcMgmtStopServerListening", decltype(RpcMgmtStopServerListening)> stopListening{
      RPC_STATUS{RPC_S_OK}};

  // No handle is left from one test to the next.
  ~HostStub() {
    statusHandle = nullptr;
    RegisterControlHandler();
    TakeSystemCalls();
  }
};

const std::string kHandlerRegistered =
    SystemCall("RegisterServiceCtrlHandlerExW", L"DozewellService", kFunction, nullptr);

// A status of a service that accepts stop, pause and continue, shut-down, power events and session
// changes.
Calls StatusSent(SERVICE_STATUS_HANDLE handle, uint32_t state, uint32_t waitHintMs) {
  return {SystemCall("SetServiceStatus", handle, kMemory),
          SystemCall("  status", 0x30, state, 0xC7, 0, 0, 0, waitHintMs)};
}

Calls NotificationRegistered(SERVICE_STATUS_HANDLE recipient) {
  return {SystemCall("RegisterPowerSettingNotification", recipient, kIdle,
                     DEVICE_NOTIFY_SERVICE_HANDLE)};
}

}  // namespace

// The first test of all that touch the handle, which is here as in a fresh process.
TEST_CASE("in a console the idle notification is asked for, and statuses sent, without a handle") {
  const CleanProductKeys clean;
  const HostStub host;
  ConsoleMode = true;
  OutputOf(ServiceMain);
  ConsoleMode = false;
  CHECK(TakeSystemCalls() ==
        Joined({NotificationRegistered(nullptr),
                StatusSent(nullptr, 4, 0),
                {SystemCall("RpcServerUseProtseqEpW", L"ncacn_np", 1234,
                            L"\\pipe\\Brevan_Dozewell_Service", nullptr)},
                StatusSent(nullptr, 3, 3000),
                {SystemCall("UnregisterPowerSettingNotification", kNotification)},
                StatusSent(nullptr, 1, 0)}));
}

TEST_CASE("the service's handler, statuses and idle notification go by its name and one handle") {
  const HostStub host;
  CHECK(RegisterControlHandler() == 0);
  CHECK(TakeSystemCalls() == Calls{kHandlerRegistered});
  CHECK(SendServiceStatus({kServiceStopPending, 3000}) == 0);
  CHECK(TakeSystemCalls() == StatusSent(kStatusHandle, 3, 3000));
  CHECK(RegisterIdleNotification() == kNotification);
  CHECK(TakeSystemCalls() == NotificationRegistered(kStatusHandle));
  UnregisterIdleNotification(kNotification);
  CHECK(TakeSystemCalls() ==
        Calls{SystemCall("UnregisterPowerSettingNotification", kNotification)});
}

TEST_CASE("a handler that is not registered answers the error and leaves no handle") {
  HostStub host;
  host.statusHandle = nullptr;
  CHECK(RegisterControlHandler() == ERROR_SERVICE_NOT_IN_EXE);
  TakeSystemCalls();
  CHECK(SendServiceStatus({kServiceRunning, 0}) == ERROR_INVALID_HANDLE);
  CHECK(TakeSystemCalls() == StatusSent(nullptr, 4, 0));
}

TEST_CASE("the registered handler passes a control on with its event's type and data") {
  const CleanProductKeys clean;
  const HostStub host;
  REQUIRE(RegisterControlHandler() == 0);
  TakeSystemCalls();
  SetServiceState(kServiceRunning, 0);
  CHECK(host.handler(SERVICE_CONTROL_PAUSE, 0, nullptr, nullptr) == NO_ERROR);
  CHECK(TakeSystemCalls() == StatusSent(kStatusHandle, 7, 0));
  // What only the controller's power events do, with the data of one setting.
  ControllerStarted = true;
  LastSaveTime = {};
  GUID setting = kIdle;
  host.handler(SERVICE_CONTROL_POWEREVENT, PBT_POWERSETTINGCHANGE, &setting, nullptr);
  ControllerStarted = false;
  CHECK(LastSaveTime.tm_mday != 0);
  LastSaveTime = {};
}

TEST_CASE("the dispatcher serves one service of this name, with the service's main routine") {
  const HostStub host;
  std::wstring name;
  bool ended = false;
  const ImportStub<"StartServiceCtrlDispatcherW", decltype(StartServiceCtrlDispatcherW)> dispatch{
      [&](const SERVICE_TABLE_ENTRYW* table) {
        name = table[0].lpServiceName;
        ended = table[1].lpServiceName == nullptr && table[1].lpServiceProc == nullptr;
        table[0].lpServiceProc(0, nullptr);
        SetLastError(ERROR_FAILED_SERVICE_CONTROLLER_CONNECT);
        return FALSE;
      }};
  const CleanProductKeys clean;
  CHECK(RunServiceDispatcher() == ERROR_FAILED_SERVICE_CONTROLLER_CONNECT);
  CHECK(name == L"DozewellService");
  CHECK(ended);
  const Calls calls = TakeSystemCalls();
  REQUIRE(calls.size() > 1);
  CHECK(calls[1] == kHandlerRegistered);
}

TEST_CASE("a dispatcher that succeeds answers no error") {
  const ImportStub<"StartServiceCtrlDispatcherW", decltype(StartServiceCtrlDispatcherW)> dispatch{
      TRUE};
  SetLastError(ERROR_ACCESS_DENIED);
  CHECK(RunServiceDispatcher() == 0);
  TakeSystemCalls();
}

TEST_CASE("leaving the console stops the service, other console events are left to the system") {
  const HostStub host;
  PHANDLER_ROUTINE handler = nullptr;
  const ImportStub<"SetConsoleCtrlHandler", decltype(SetConsoleCtrlHandler)> set{
      [&](PHANDLER_ROUTINE routine, BOOL) {
        handler = routine;
        return TRUE;
      }};
  const ImportStub<"Sleep", decltype(Sleep)> sleep;
  InstallConsoleHandler();
  CHECK(TakeSystemCalls() == Calls{SystemCall("SetConsoleCtrlHandler", kFunction, TRUE)});
  REQUIRE((handler != nullptr));
  CHECK(handler(3) == FALSE);
  CHECK(TakeSystemCalls() == Calls{});
  const Calls stopped =
      Joined({{SystemCall("RpcMgmtStopServerListening", nullptr)}, StatusSent(nullptr, 3, 0)});
  for (const DWORD type : {CTRL_C_EVENT, CTRL_BREAK_EVENT}) {
    CHECK(handler(type) == TRUE);
    CHECK(TakeSystemCalls() == stopped);
  }
  // Windows ends the process when the handler returns, so these wait for the main routine.
  for (const DWORD type : {CTRL_CLOSE_EVENT, CTRL_LOGOFF_EVENT, CTRL_SHUTDOWN_EVENT}) {
    CHECK(handler(type) == TRUE);
    CHECK(TakeSystemCalls() == Joined({stopped, {SystemCall("Sleep", 20000)}}));
  }
  RPCStopRequested = false;
}

}  // namespace dozewell
