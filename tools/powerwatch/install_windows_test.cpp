#include <doctest/doctest.h>
#include <windows.h>

#include <algorithm>
#include <string>
#include <vector>

#include "powerwatch/install.h"
#include "powerwatch/watch_folder.h"
#include "service/service_manager.h"
#include "support/calls.h"
#include "support/program_data_windows.h"
#include "support/system_calls_windows.h"
#include "support/temp_folder.h"

namespace dozewell::powerwatch {

using namespace support;

namespace {

// A machine on which the watch is not installed.
class BareMachine {
 public:
  BareMachine() : programData_(folder_.Path()), places_(FindPlaces()) {}

  bool HasFolder() const { return IsFolder(places_.folder); }
  bool HasService() const {
    const ServiceHandle manager = OpenManager();
    return OpenExistingService(manager.get(), kWatchServiceName) != nullptr;
  }
  const WatchPlaces& Places() const { return places_; }

 private:
  const TempFolder folder_;
  const ProgramDataAt programData_;
  const WatchPlaces places_;
};

}  // namespace

TEST_CASE("the watch is a service of the account LocalService that starts by itself") {
  const BareMachine machine;
  std::wstring account;
  std::wstring command;
  DWORD start = 0;
  const ImportStub<"CreateServiceW", decltype(CreateServiceW)> create{
      [&](SC_HANDLE, const wchar_t*, const wchar_t*, DWORD, DWORD, DWORD startType, DWORD,
          const wchar_t* path, const wchar_t*, DWORD*, const wchar_t*, const wchar_t* user,
          const wchar_t*) -> SC_HANDLE {
        account = user;
        command = path;
        start = startType;
        SetLastError(ERROR_ACCESS_DENIED);
        return nullptr;
      }};
  CHECK_THROWS_WITH(InstallWatch(), "the service cannot be created (error 5)");
  TakeSystemCalls();
  CHECK((account == L"NT AUTHORITY\\LocalService"));
  CHECK((command == L'"' + machine.Places().program + L'"'));
  CHECK(start == SERVICE_AUTO_START);
  CHECK_FALSE(machine.HasFolder());
}

TEST_CASE("the watch is left no privilege but that to reach its folder") {
  const BareMachine machine;
  std::vector<std::wstring> kept;
  const ImportStub<"ChangeServiceConfig2W", decltype(ChangeServiceConfig2W)> change{
      [&](SC_HANDLE, DWORD level, void* information) {
        if (level == SERVICE_CONFIG_REQUIRED_PRIVILEGES_INFO) {
          const wchar_t* name =
              static_cast<SERVICE_REQUIRED_PRIVILEGES_INFOW*>(information)->pmszRequiredPrivileges;
          for (; *name != 0; name += kept.back().size() + 1) kept.emplace_back(name);
          SetLastError(ERROR_ACCESS_DENIED);
          return FALSE;
        }
        return TRUE;
      }};
  CHECK_THROWS_WITH(InstallWatch(), "the service's privileges cannot be taken from it (error 5)");
  TakeSystemCalls();
  CHECK((kept == std::vector<std::wstring>{L"SeChangeNotifyPrivilege"}));
  CHECK_FALSE(machine.HasFolder());
  CHECK_FALSE(machine.HasService());
}

TEST_CASE("a watch that cannot be started, or stops at once, is not left behind") {
  const BareMachine machine;
  {
    const ImportStub<"StartServiceW", decltype(StartServiceW)> start{
        [](SC_HANDLE, DWORD, const wchar_t**) {
          SetLastError(ERROR_ACCESS_DENIED);
          return FALSE;
        }};
    CHECK_THROWS_WITH(InstallWatch(), "the service cannot be started (error 5)");
  }
  {
    const ImportStub<"StartServiceW", decltype(StartServiceW)> start{TRUE};
    const ImportStub<"QueryServiceStatusEx", decltype(QueryServiceStatusEx)> query{
        [](SC_HANDLE, SC_STATUS_TYPE, BYTE* status, DWORD, DWORD*) {
          auto* const record = reinterpret_cast<SERVICE_STATUS_PROCESS*>(status);
          record->dwCurrentState = SERVICE_STOPPED;
          record->dwWin32ExitCode = ERROR_ACCESS_DENIED;
          return TRUE;
        }};
    CHECK_THROWS_WITH(InstallWatch(), "the service does not stay on (error 5)");
  }
  TakeSystemCalls();
  CHECK_FALSE(machine.HasFolder());
  CHECK_FALSE(machine.HasService());
}

TEST_CASE("a folder in the watch's place leaves the machine without the service") {
  const BareMachine machine;
  REQUIRE(CreateDirectoryW(machine.Places().folder.c_str(), nullptr) != 0);
  CHECK_THROWS_WITH(InstallWatch(), doctest::Contains("DozewellPowerwatch: exists already"));
  CHECK_FALSE(machine.HasService());
}

TEST_CASE("the installed copy does not remove itself, and changes nothing") {
  const BareMachine machine;
  const std::wstring own = machine.Places().program;
  const ImportStub<"GetModuleFileNameW", decltype(GetModuleFileNameW)> name{
      [&](HMODULE, wchar_t* path, DWORD) {
        std::ranges::copy(own, path);
        path[0] = L'c';
        return static_cast<DWORD>(own.size());
      }};
  CHECK_THROWS_WITH(RemoveWatch(), doctest::Contains("this copy cannot delete itself"));
  CHECK(TakeSystemCalls().size() == 1);
}

TEST_CASE("removing a watch that is not there is no error") {
  const BareMachine machine;
  CHECK_NOTHROW(RemoveWatch());
}

}  // namespace dozewell::powerwatch
