#include <doctest/doctest.h>
#include <windows.h>
// After windows.h, which it needs.
#include <sddl.h>

#include <cstring>
#include <string>
#include <vector>

#include "base/utf8.h"
#include "service/service_host.h"
#include "service/service_manager.h"
#include "setup/failure_actions.h"
#include "setup/service_command.h"
#include "setup/system_steps.h"
#include "setup/undo_notes.h"
#include "support/access_rights_windows.h"
#include "support/registry_windows.h"
#include "support/system_calls_windows.h"

namespace dozewell::setup {

using namespace support;

namespace {

// The service, with this command line, until the end of this object.
class KnownService {
 public:
  explicit KnownService(const wchar_t* command)
      : manager_(OpenManager()), service_(CreateOwnService(manager_.get(), kServiceName, command)) {
    REQUIRE(service_ != nullptr);
  }
  ~KnownService() { DeleteExistingService(service_.get()); }
  KnownService(const KnownService&) = delete;
  KnownService& operator=(const KnownService&) = delete;

  std::wstring Command() const { return CommandOf(service_.get()); }
  uint32_t StartType() const { return StartTypeOf(service_.get()); }
  void SetStartType(DWORD type) const {
    CHECK(ChangeServiceConfigW(static_cast<SC_HANDLE>(service_.get()), SERVICE_NO_CHANGE, type,
                               SERVICE_NO_CHANGE, nullptr, nullptr, nullptr, nullptr, nullptr,
                               nullptr, nullptr) != 0);
  }

 private:
  const ServiceHandle manager_;
  const ServiceHandle service_;
};

// Stands in for what Wine does not keep of a service: its delay, its restarts and its rights.
class KeptSettings {
 public:
  bool isDelayed = false;
  FailureActions failures;
  std::wstring access;

 private:
  static BOOL Copy(const void* record, DWORD needed, void* buffer, DWORD size, DWORD* told) {
    *told = needed;
    if (size < needed) {
      SetLastError(ERROR_INSUFFICIENT_BUFFER);
      return FALSE;
    }
    std::memcpy(buffer, record, needed);
    return TRUE;
  }

  ImportStub<"QueryServiceConfig2W", decltype(QueryServiceConfig2W)> query_{
      [this](SC_HANDLE, DWORD level, BYTE* buffer, DWORD size, DWORD* told) -> BOOL {
        if (level == SERVICE_CONFIG_DELAYED_AUTO_START_INFO) {
          const SERVICE_DELAYED_AUTO_START_INFO delay = {isDelayed};
          return Copy(&delay, sizeof(delay), buffer, size, told);
        }
        for (const FailureActions::Action& action : failures.actions) {
          actions_.push_back({static_cast<SC_ACTION_TYPE>(action.kind), action.delayMs});
        }
        const SERVICE_FAILURE_ACTIONSW record = {failures.resetSeconds, nullptr, nullptr,
                                                 static_cast<DWORD>(failures.actions.size()),
                                                 actions_.data()};
        return Copy(&record, sizeof(record), buffer, size, told);
      }};
  ImportStub<"ChangeServiceConfig2W", decltype(ChangeServiceConfig2W)> change_{
      [this](SC_HANDLE, DWORD level, void* record) -> BOOL {
        if (level == SERVICE_CONFIG_DELAYED_AUTO_START_INFO) {
          isDelayed = static_cast<SERVICE_DELAYED_AUTO_START_INFO*>(record)->fDelayedAutostart != 0;
          return TRUE;
        }
        const auto& set = *static_cast<const SERVICE_FAILURE_ACTIONSW*>(record);
        failures = {static_cast<uint32_t>(set.dwResetPeriod), {}};
        for (DWORD i = 0; i < set.cActions; ++i) {
          failures.actions.push_back({static_cast<uint32_t>(set.lpsaActions[i].Type),
                                      static_cast<uint32_t>(set.lpsaActions[i].Delay)});
        }
        return TRUE;
      }};
  ImportStub<"QueryServiceObjectSecurity", decltype(QueryServiceObjectSecurity)> queryAccess_{
      [this](SC_HANDLE, SECURITY_INFORMATION, PSECURITY_DESCRIPTOR buffer, DWORD size,
             DWORD* told) -> BOOL {
        PSECURITY_DESCRIPTOR descriptor = nullptr;
        DWORD needed = 0;
        REQUIRE(ConvertStringSecurityDescriptorToSecurityDescriptorW(
                    access.c_str(), SDDL_REVISION_1, &descriptor, &needed) != 0);
        const BOOL isCopied = Copy(descriptor, needed, buffer, size, told);
        LocalFree(descriptor);
        return isCopied;
      }};
  ImportStub<"SetServiceObjectSecurity", decltype(SetServiceObjectSecurity)> setAccess_{
      [this](SC_HANDLE, SECURITY_INFORMATION parts, PSECURITY_DESCRIPTOR descriptor) -> BOOL {
        access = WidenUtf8(AccessText(descriptor, parts));
        return TRUE;
      }};
  std::vector<SC_ACTION> actions_;
};

}  // namespace

TEST_CASE("what is set for the service is as before when its configuration is undone") {
  const CleanProductKeys keys;
  const KnownService service(L"C:\\a b\\none.exe");
  service.SetStartType(SERVICE_DEMAND_START);
  KeptSettings kept;
  kept.failures = {60, {{2, 5'000}, {0, 0}}};
  kept.access = L"D:(A;;CCLCSWRPWPDTLOCRRC;;;SY)(A;;LC;;;WD)";
  const std::wstring access = kept.access;

  NoteService();
  service.SetStartType(SERVICE_AUTO_START);
  ConfigureService();
  CHECK(service.Command() == L"\"C:\\a b\\none.exe\"");
  CHECK(kept.isDelayed);
  CHECK(kept.failures != FailureActions{60, {{2, 5'000}, {0, 0}}});
  CHECK(kept.access != access);

  UndoService();
  CHECK(service.Command() == L"C:\\a b\\none.exe");
  CHECK(service.StartType() == SERVICE_DEMAND_START);
  CHECK_FALSE(kept.isDelayed);
  CHECK(kept.failures == FailureActions{60, {{2, 5'000}, {0, 0}}});
  CHECK(kept.access == access);
  CHECK(ReadUndoNotes(kServiceNotes).empty());
  TakeSystemCalls();
}

TEST_CASE("a service that had no restarts has none when its configuration is undone") {
  const CleanProductKeys keys;
  const KnownService service(L"C:\\none.exe");
  KeptSettings kept;
  kept.access = L"D:(A;;LC;;;WD)";
  NoteService();
  ConfigureService();
  CHECK(kept.failures.actions.size() == 3);
  UndoService();
  CHECK(kept.failures == FailureActions{0, {}});
  TakeSystemCalls();
}

TEST_CASE("only a service that ran is started when an installation is undone") {
  const CleanProductKeys keys;
  const KnownService service(L"C:\\none.exe");
  int starts = 0;
  DWORD state = SERVICE_RUNNING;
  DWORD error = 0;
  const ImportStub<"QueryServiceStatus", decltype(QueryServiceStatus)> query{
      [&state](SC_HANDLE, SERVICE_STATUS* status) -> BOOL {
        status->dwCurrentState = state;
        return TRUE;
      }};
  const ImportStub<"StartServiceW", decltype(StartServiceW)> start{
      [&](SC_HANDLE, DWORD, const wchar_t**) -> BOOL {
        ++starts;
        SetLastError(error);
        return error == 0;
      }};
  for (const DWORD stopped : {SERVICE_STOPPED, SERVICE_STOP_PENDING}) {
    state = stopped;
    NoteService();
    UndoService();
    CHECK(starts == 0);
  }
  state = SERVICE_RUNNING;
  NoteService();
  UndoService();
  CHECK(starts == 1);
  error = ERROR_SERVICE_ALREADY_RUNNING;
  NoteService();
  CHECK_NOTHROW(UndoService());
  error = ERROR_SERVICE_LOGON_FAILED;
  NoteService();
  CHECK_THROWS_WITH(UndoService(), "the service's state cannot be made as before (error 1069)");
  TakeSystemCalls();
}

TEST_CASE("without a service nothing is noted, and nothing need be undone") {
  const CleanProductKeys keys;
  UndoNotes(kServiceNotes).Add(L"path=of an earlier installation");
  UndoNotes(kDataFolderNotes).Add(L"made|C:\\of one too|");
  NoteService();
  CHECK(ReadUndoNotes(kServiceNotes).empty());
  CHECK(ReadUndoNotes(kDataFolderNotes).empty());
  CHECK_NOTHROW(UndoService());
}

TEST_CASE("a service that has gone cannot be made as before") {
  const CleanProductKeys keys;
  UndoNotes(kServiceNotes).Add(L"path=C:\\none.exe");
  CHECK_THROWS_WITH(UndoService(), "the service is not there any more (error 1060)");
}

}  // namespace dozewell::setup
