#include <doctest/doctest.h>
#include <windows.h>

#include <bit>
#include <functional>
#include <string>

#include "service/service_manager.h"
#include "support/calls.h"
#include "support/system_calls_windows.h"

namespace dozewell {

using namespace support;

namespace {

const auto kManager = std::bit_cast<SC_HANDLE>(uint64_t{0x100});
const auto kService = std::bit_cast<SC_HANDLE>(uint64_t{0x200});

// The service control manager, which does all it is asked.
struct ManagerStub {
  ImportStub<"OpenSCManagerW", decltype(OpenSCManagerW)> open{kManager};
  ImportStub<"CreateServiceW", decltype(CreateServiceW)> create{kService};
  ImportStub<"OpenServiceW", decltype(OpenServiceW)> openService{kService};
  ImportStub<"ChangeServiceConfig2W", decltype(ChangeServiceConfig2W)> change{
      [](SC_HANDLE, DWORD level, void* record) {
        if (level == SERVICE_CONFIG_DESCRIPTION) {
          const auto& description = *static_cast<const SERVICE_DESCRIPTIONW*>(record);
          NoteSystemCall(SystemCall("  description", description.lpDescription));
        } else {
          const auto& delay = *static_cast<const SERVICE_DELAYED_AUTO_START_INFO*>(record);
          NoteSystemCall(SystemCall("  delayed", delay.fDelayedAutostart));
        }
        return TRUE;
      }};
  ImportStub<"StartServiceW", decltype(StartServiceW)> start{TRUE};
  ImportStub<"ControlService", decltype(ControlService)> control{TRUE};
  ImportStub<"DeleteService", decltype(DeleteService)> remove{TRUE};
  ImportStub<"CloseServiceHandle", decltype(CloseServiceHandle)> close{TRUE};
};

}  // namespace

TEST_CASE("the service control manager is asked for these rights, settings and controls") {
  struct Row {
    std::function<void()> ask;
    Calls calls;
  };
  const wchar_t* const name = L"DozewellService";
  const wchar_t* const path = L"\"C:\\a b\\x.exe\"";
  const Row rows[] = {
      {[] { OpenManagerToCreate(); },
       {SystemCall("OpenSCManagerW", nullptr, nullptr, SC_MANAGER_CREATE_SERVICE),
        SystemCall("CloseServiceHandle", kManager)}},
      {[] { OpenManager(); },
       {SystemCall("OpenSCManagerW", nullptr, nullptr, SC_MANAGER_ALL_ACCESS),
        SystemCall("CloseServiceHandle", kManager)}},
      {[&] { CreateOwnService(kManager, name, path); },
       {SystemCall("CreateServiceW", kManager, name, name, SERVICE_ALL_ACCESS,
                   SERVICE_WIN32_OWN_PROCESS, SERVICE_AUTO_START, SERVICE_ERROR_NORMAL, path,
                   nullptr, nullptr, nullptr, nullptr, nullptr),
        SystemCall("CloseServiceHandle", kService)}},
      {[&] { OpenExistingService(kManager, name); },
       {SystemCall("OpenServiceW", kManager, name, SERVICE_ALL_ACCESS),
        SystemCall("CloseServiceHandle", kService)}},
      {[] { SetServiceDescription(kService, L"what it does"); },
       {SystemCall("ChangeServiceConfig2W", kService, SERVICE_CONFIG_DESCRIPTION, kMemory),
        SystemCall("  description", L"what it does")}},
      {[] { SetDelayedAutoStart(kService); },
       {SystemCall("ChangeServiceConfig2W", kService, SERVICE_CONFIG_DELAYED_AUTO_START_INFO,
                   kMemory),
        SystemCall("  delayed", TRUE)}},
      {[] { CHECK(StartExistingService(kService)); },
       {SystemCall("StartServiceW", kService, 0, nullptr)}},
      {[] { CHECK(StopExistingService(kService)); },
       {SystemCall("ControlService", kService, SERVICE_CONTROL_STOP, kMemory)}},
      {[] { CHECK(DeleteExistingService(kService)); }, {SystemCall("DeleteService", kService)}},
  };
  const ManagerStub manager;
  for (const Row& row : rows) {
    row.ask();
    CHECK(TakeSystemCalls() == row.calls);
  }
}

TEST_CASE("what the service control manager refuses answers null or false, with the error") {
  const auto refuse = [] { SetLastError(ERROR_ACCESS_DENIED); };
  const ImportStub<"OpenSCManagerW", decltype(OpenSCManagerW)> open{
      [=](const wchar_t*, const wchar_t*, DWORD) -> SC_HANDLE { return refuse(), nullptr; }};
  const ImportStub<"StartServiceW", decltype(StartServiceW)> start{
      [=](SC_HANDLE, DWORD, const wchar_t**) { return refuse(), FALSE; }};
  const ImportStub<"ControlService", decltype(ControlService)> control{};
  const ImportStub<"DeleteService", decltype(DeleteService)> remove{};
  CHECK(OpenManager() == nullptr);
  CHECK(OpenManagerToCreate() == nullptr);
  CHECK_FALSE(StartExistingService(kService));
  CHECK(LastSystemError() == ERROR_ACCESS_DENIED);
  CHECK_FALSE(StopExistingService(kService));
  CHECK_FALSE(DeleteExistingService(kService));
  TakeSystemCalls();
}

TEST_CASE("the module's path is this program's, cut where it would be longer than a path may be") {
  CHECK(ModulePath().ends_with(L"leaf_tests.exe"));
  const ImportStub<"GetModuleFileNameW", decltype(GetModuleFileNameW)> name{
      [](HMODULE, wchar_t* path, DWORD size) {
        for (DWORD i = 0; i < size; ++i) path[i] = L'x';
        return size;
      }};
  CHECK(ModulePath() == std::wstring(MAX_PATH - 1, L'x'));
  CHECK(TakeSystemCalls() == Calls{SystemCall("GetModuleFileNameW", nullptr, L"", MAX_PATH)});
}

}  // namespace dozewell
