#include <doctest/doctest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "base/system_handle.h"
#include "service/service_host.h"
#include "service/service_manager.h"
#include "setup/system_steps.h"
#include "support/system_calls_windows.h"
#include "support/temp_folder.h"

namespace dozewell::setup {

using namespace support;

namespace {

constexpr wchar_t kName[] = L"\\DozewellService.exe";

// The service as it is installed, with a program of this path, not running.
class InstalledService {
 public:
  explicit InstalledService(const std::wstring& program)
      : manager_(OpenManager()),
        service_(CreateOwnService(manager_.get(), kServiceName, (L'"' + program + L'"').c_str())) {
    REQUIRE(service_ != nullptr);
  }
  ~InstalledService() { DeleteExistingService(service_.get()); }
  InstalledService(const InstalledService&) = delete;
  InstalledService& operator=(const InstalledService&) = delete;

 private:
  const ServiceHandle manager_;
  const ServiceHandle service_;
};

// The process of a program under this path, which is made unless it is there, until the end of this
// object. It is suspended from the start, since it need not do anything.
class RunningProgram {
 public:
  explicit RunningProgram(const std::wstring& path) {
    wchar_t own[MAX_PATH];
    REQUIRE(GetModuleFileNameW(nullptr, own, MAX_PATH) != 0);
    CopyFileW(own, path.c_str(), /*failIfExists*/ TRUE);
    std::wstring command = L'"' + path + L'"';
    STARTUPINFOW startup = {};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION started = {};
    REQUIRE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE,
                           CREATE_NO_WINDOW | CREATE_SUSPENDED, nullptr, nullptr, &startup,
                           &started) != 0);
    CloseHandle(started.hThread);
    process_.reset(started.hProcess);
  }
  ~RunningProgram() {
    TerminateProcess(process_.get(), 0);
    WaitForSingleObject(process_.get(), INFINITE);
  }
  RunningProgram(const RunningProgram&) = delete;
  RunningProgram& operator=(const RunningProgram&) = delete;

 private:
  SystemHandle process_;
};

}  // namespace

TEST_CASE("a service that is not installed need not be stopped") {
  CHECK_NOTHROW(StopService(INFINITE));
}

TEST_CASE("the service's program is waited for while it runs without the service's knowledge") {
  const TempFolder folder;
  const std::wstring path = folder.Path() + kName;
  const InstalledService service(path);
  {
    const RunningProgram program(path);
    CHECK_THROWS_WITH(StopService(1),
                      doctest::Contains("DozewellService.exe still runs (error 258)"));
  }
  CHECK_NOTHROW(StopService(1));
}

TEST_CASE("a program of the service's name that lies elsewhere is not waited for") {
  const TempFolder folder;
  const TempFolder elsewhere;
  const InstalledService service(folder.Path() + kName);
  const RunningProgram program(elsewhere.Path() + kName);
  CHECK_NOTHROW(StopService(1));
}

TEST_CASE("all waits for the service's program end by one moment") {
  const TempFolder folder;
  const std::wstring path = folder.Path() + kName;
  const InstalledService service(path);
  const RunningProgram first(path);
  const RunningProgram second(path);
  std::vector<DWORD> waits;
  {
    const ImportStub<"WaitForSingleObject", decltype(WaitForSingleObject)> wait{
        [&waits](HANDLE, DWORD milliseconds) -> DWORD {
          waits.push_back(milliseconds);
          Sleep(200);
          return WAIT_OBJECT_0;
        }};
    StopService(10'000);
  }
  TakeSystemCalls();
  REQUIRE(waits.size() == 2);
  CHECK(waits[0] <= 10'000);
  CHECK(waits[1] < waits[0]);
}

}  // namespace dozewell::setup
