#include "service/command_line.h"

#include <cstdint>
#include <cstdio>
#include <mutex>
#include <string_view>

#include "base/lock.h"
#include "diagnostics/event_writer.h"
#include "service/install.h"
#include "service/service_host.h"
#include "service/service_main.h"

namespace dozewell {
namespace {

constexpr int kUsageExitCode = -1;

void RunService() {
  const uint32_t error = RunServiceDispatcher();
  if (error != 0) {
    LogServiceEvent(L"StartServiceCtrlDispatcher failed, error code = %d\n", error, kEventError);
  }
}

void RunInConsole() {
  ConsoleMode = true;
  InstallConsoleHandler();
  ServiceMain();
}

// Waits for the threads that hold the locks and keeps all others out from then on: a thread that
// the end of the process cut short could lose the user's own hibernate-after timeout, or records.
void LockControllerForExit() { std::lock(ControllerLock, EngineLock); }

constexpr wchar_t ToLower(wchar_t character) {
  return character >= L'A' && character <= L'Z' ? static_cast<wchar_t>(character - L'A' + L'a')
                                                : character;
}

bool EqualsIgnoringCase(std::wstring_view a, std::wstring_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    if (ToLower(a[i]) != ToLower(b[i])) return false;
  }
  return true;
}

void PrintUsage() {
  std::fputs(
      "Usage: \n"
      "  DozewellService -i\t// install the service\n"
      "  DozewellService -u\t// uninstall the service\n",
      stdout);
}

}  // namespace

int RunCommandLine(int argc, const wchar_t* const* argv) {
  if (argc < 2) {
    RunService();
    LockControllerForExit();
  } else if (EqualsIgnoringCase(argv[1], L"-i")) {
    InstallService();
  } else if (EqualsIgnoringCase(argv[1], L"-u")) {
    UninstallService();
  } else if (EqualsIgnoringCase(argv[1], L"-local")) {
    RunInConsole();
    LockControllerForExit();
  } else {
    PrintUsage();
    return kUsageExitCode;
  }
  return 0;
}

}  // namespace dozewell
