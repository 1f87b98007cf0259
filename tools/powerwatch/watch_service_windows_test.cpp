#include <doctest/doctest.h>
#include <windows.h>

#include "powerwatch/watch_service.h"
// After windows.h, which it needs.
#include <wtsapi32.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "base/file.h"
#include "common/text.h"
#include "powerwatch/watch_folder.h"
#include "powerwatch/watch_log.h"
#include "service/service_host.h"
#include "support/calls.h"
#include "support/program_data_windows.h"
#include "support/system_calls_windows.h"
#include "support/temp_folder.h"

namespace dozewell::powerwatch {

using namespace support;

namespace {

const auto kStatusHandle = std::bit_cast<SERVICE_STATUS_HANDLE>(uint64_t{0x300});
const auto kNotification = std::bit_cast<HPOWERNOTIFY>(uint64_t{0x400});

// A machine on which the watch is installed and the system starts it.
class Host {
 public:
  Host() : programData_(folder_.Path()), places_(FindPlaces()) { MakeFolder(places_); }

  // Serves until it stops; `meanwhile` is what the system does when it runs.
  void Serve(std::function<void()> meanwhile) {
    meanwhile_ = std::move(meanwhile);
    CHECK(ServeWatch() == 0);
    calls_ = TakeSystemCalls();
  }
  DWORD Send(DWORD control, DWORD type = 0, void* data = nullptr) {
    return handler_(control, type, data, nullptr);
  }
  // State, accepted controls and exit code of each status.
  Calls Statuses() const { return statuses_; }
  bool Called(const std::string& call) const {
    return std::ranges::find(calls_, call) != calls_.end();
  }
  // The lines of the file without their times.
  std::vector<std::string> Lines() const {
    const auto bytes = ReadWholeFile(places_.file).value();
    std::vector<std::string> lines;
    for (const std::string_view line :
         SplitLines({reinterpret_cast<const char*>(bytes.data()), bytes.size()})) {
      lines.emplace_back(line.substr(0, line.find(",20")));
    }
    return lines;
  }
  const WatchPlaces& Places() const { return places_; }

 private:
  const TempFolder folder_;
  const ProgramDataAt programData_;
  const WatchPlaces places_;
  std::function<void()> meanwhile_;
  Calls calls_;
  Calls statuses_;
  LPHANDLER_FUNCTION_EX handler_ = nullptr;

  const ImportStub<"StartServiceCtrlDispatcherW", decltype(StartServiceCtrlDispatcherW)> dispatch_{
      [](const SERVICE_TABLE_ENTRYW* table) {
        CHECK(std::wstring(table[0].lpServiceName) == L"DozewellPowerwatch");
        table[0].lpServiceProc(0, nullptr);
        return TRUE;
      }};
  const ImportStub<"RegisterServiceCtrlHandlerExW", decltype(RegisterServiceCtrlHandlerExW)>
      register_{[this](const wchar_t*, LPHANDLER_FUNCTION_EX handler, void*) {
        handler_ = handler;
        return kStatusHandle;
      }};
  const ImportStub<"SetServiceStatus", decltype(SetServiceStatus)> setStatus_{
      [this](SERVICE_STATUS_HANDLE, SERVICE_STATUS* status) {
        statuses_.push_back(SystemCall("status", status->dwServiceType, status->dwCurrentState,
                                       status->dwControlsAccepted, status->dwWin32ExitCode));
        return TRUE;
      }};
  const ImportStub<"RegisterPowerSettingNotification", decltype(RegisterPowerSettingNotification)>
      notify_{[this](HANDLE, const GUID*, DWORD) {
        meanwhile_();
        return kNotification;
      }};
  const ImportStub<"UnregisterPowerSettingNotification",
                   decltype(UnregisterPowerSettingNotification)>
      unregister_{TRUE};
};

std::string Status(uint32_t state, uint32_t exitCode = 0) {
  return SystemCall("status", SERVICE_WIN32_OWN_PROCESS, state, 0xC7, exitCode);
}

constexpr char kColumns[] =
    "control,type,identifier,local_time,utc_time,tick_ms,awake_ms,last_sleep_ms,last_wake_ms,"
    "idle_left_s";

}  // namespace

TEST_CASE("each control that the watch gets is a line, with its type and what it is about") {
  Host host;
  POWERBROADCAST_SETTING setting = {};
  std::memcpy(&setting.PowerSetting, kIdleBackgroundTask.data(), kIdleBackgroundTask.size());
  WTSSESSION_NOTIFICATION session = {sizeof(session), 3};
  host.Serve([&] {
    CHECK(host.Send(SERVICE_CONTROL_POWEREVENT, PBT_APMSUSPEND) == NO_ERROR);
    host.Send(SERVICE_CONTROL_POWEREVENT, PBT_APMRESUMEAUTOMATIC);
    host.Send(SERVICE_CONTROL_POWEREVENT, PBT_POWERSETTINGCHANGE, &setting);
    host.Send(SERVICE_CONTROL_POWEREVENT, PBT_POWERSETTINGCHANGE);
    host.Send(SERVICE_CONTROL_SESSIONCHANGE, WTS_SESSION_LOGON, &session);
    host.Send(200, 7);
    host.Send(SERVICE_CONTROL_STOP);
  });
  CHECK(host.Lines() == std::vector<std::string>{kColumns, "0,0,", "13,4,", "13,18,",
                                                 "13,32787,{515C31D8-F734-163D-A0FD-11A08C91E8F1}",
                                                 "13,32787,", "14,5,3", "200,7,", "1,0,"});
}

TEST_CASE("the watch accepts what the Dozewell service accepts, and asks for the same setting") {
  Host host;
  host.Serve([&] {
    for (const DWORD control : {2, 4, 3, 1}) host.Send(control);
  });
  CHECK(host.Statuses() == Calls{Status(4), Status(7), Status(7), Status(4), Status(3), Status(1)});
  GUID idle;
  std::memcpy(&idle, kIdleBackgroundTask.data(), sizeof(idle));
  CHECK(host.Called(SystemCall("RegisterPowerSettingNotification", kStatusHandle, idle,
                               DEVICE_NOTIFY_SERVICE_HANDLE)));
  CHECK(host.Called(SystemCall("UnregisterPowerSettingNotification", kNotification)));
}

TEST_CASE("a shut-down ends the watch, and the next one goes on in the same file") {
  Host host;
  host.Serve([&] { host.Send(SERVICE_CONTROL_SHUTDOWN); });
  host.Serve([&] { host.Send(SERVICE_CONTROL_STOP); });
  CHECK(host.Lines() == std::vector<std::string>{kColumns, "0,0,", "5,0,", "", "0,0,", "1,0,"});
}

TEST_CASE("a watch whose file is full stops by itself with the reason") {
  Host host;
  const HANDLE file =
      CreateFileW(host.Places().file.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  REQUIRE(file != INVALID_HANDLE_VALUE);
  // Room for the beginning, and not for a line after it.
  LARGE_INTEGER size = {};
  size.QuadPart = kMostBytes - 130;
  REQUIRE(SetFilePointerEx(file, size, nullptr, FILE_BEGIN) != 0);
  REQUIRE(SetEndOfFile(file) != 0);
  CloseHandle(file);
  host.Serve([&] { host.Send(SERVICE_CONTROL_POWEREVENT, PBT_APMSUSPEND); });
  CHECK(host.Statuses() == Calls{Status(4), Status(3, 223), Status(1, 223)});
}

TEST_CASE("a watch without its file stops with the reason, whatever it is told meanwhile") {
  Host host;
  REQUIRE(DeleteFileW(host.Places().file.c_str()) != 0);
  host.Serve([] {});
  CHECK(host.Statuses() == Calls{Status(1, ERROR_FILE_NOT_FOUND)});
  CHECK(host.Send(SERVICE_CONTROL_INTERROGATE) == NO_ERROR);
}

TEST_CASE("a watch that the system did not start as a service says so") {
  const ImportStub<"StartServiceCtrlDispatcherW", decltype(StartServiceCtrlDispatcherW)> dispatch{
      [](const SERVICE_TABLE_ENTRYW*) {
        SetLastError(ERROR_FAILED_SERVICE_CONTROLLER_CONNECT);
        return FALSE;
      }};
  CHECK(ServeWatch() == ERROR_FAILED_SERVICE_CONTROLLER_CONNECT);
  TakeSystemCalls();
}

}  // namespace dozewell::powerwatch
