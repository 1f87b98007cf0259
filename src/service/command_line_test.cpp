#include "service/command_line.h"

#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "base/lock.h"
#include "fakes/journal.h"
#include "fakes/lock_fake.h"
#include "fakes/machine.h"
#include "fakes/service_fake.h"
#include "service/control_handler.h"
#include "service/service_main.h"
#include "support/calls.h"
#include "support/captured_output.h"

namespace dozewell {
namespace {

constexpr const char* kUsage =
    "Usage: \n"
    "  DozewellService -i\t// install the service\n"
    "  DozewellService -u\t// uninstall the service\n";

struct Ran {
  int exitCode = 0;
  std::string output;
  Calls calls;
};

Ran Run(const std::vector<const wchar_t*>& arguments) {
  std::vector<const wchar_t*> argv = {L"DozewellService.exe"};
  argv.insert(argv.end(), arguments.begin(), arguments.end());
  Ran ran;
  fakes::TakeJournal();
  ran.output =
      OutputOf([&] { ran.exitCode = RunCommandLine(static_cast<int>(argv.size()), argv.data()); });
  ran.calls = fakes::TakeJournal();
  return ran;
}

// The first call, which shows the path that was taken.
std::string PathOf(const Ran& ran) { return ran.calls.empty() ? "" : ran.calls.front(); }

}  // namespace

TEST_CASE("without an argument the process serves the service control manager") {
  const fakes::Machine machine;
  const Ran ran = Run({});
  CHECK(ran.exitCode == 0);
  CHECK(ran.output.empty());
  CHECK(ran.calls == Calls{"service: dispatch"});
  CHECK_FALSE(ConsoleMode);
}

TEST_CASE("a process without even its own name serves, too") {
  const fakes::Machine machine;
  CHECK(RunCommandLine(0, nullptr) == 0);
  CHECK(fakes::TakeJournal() == Calls{"service: dispatch"});
}

TEST_CASE("a dispatcher that fails is reported, and the process ends well") {
  const fakes::Machine machine;
  fakes::service.failer.firstFailing = 1;
  fakes::service.error = 1063;
  const Ran ran = Run({});
  CHECK(ran.exitCode == 0);
  CHECK(ran.calls == Calls{"service: dispatch",
                           "report 1 StartServiceCtrlDispatcher failed, error code = 1063\n"});
}

TEST_CASE("arguments choose the path in any case of letters, and further ones are ignored") {
  struct Row {
    std::vector<const wchar_t*> arguments;
    const char* path;
  };
  const Row rows[] = {
      {{L"-i"}, "service: open manager to create"},
      {{L"-I"}, "service: open manager to create"},
      {{L"-i", L"-u"}, "service: open manager to create"},
      {{L"-u"}, "service: open manager"},
      {{L"-U", L"-x"}, "service: open manager"},
      {{L"-local"}, "service: install console handler"},
      {{L"-LOCAL"}, "service: install console handler"},
      {{L"-LoCaL", L"-i"}, "service: install console handler"},
  };
  for (const Row& row : rows) {
    const fakes::Machine machine;
    const Ran ran = Run(row.arguments);
    CHECK(ran.exitCode == 0);
    CHECK(PathOf(ran) == row.path);
    CHECK(ran.output.find("Usage") == std::string::npos);
  }
}

TEST_CASE("any other argument prints the usage, which does not tell of the console") {
  for (const wchar_t* argument : {L"-x", L"", L"i", L"-", L"/i", L"-in", L"--i", L"-locale",
                                  L"-loca", L"-i ", L"-\u0131", L"-\u212A", L"\rI", L"-\x09"}) {
    const fakes::Machine machine;
    const Ran ran = Run({argument, L"-i"});
    CHECK(ran.exitCode == -1);
    CHECK(ran.output == kUsage);
    CHECK(ran.calls == Calls{});
  }
}

TEST_CASE("a process that served keeps other threads out of controller and history while it ends") {
  struct Row {
    std::vector<const wchar_t*> arguments;
    bool closed;
  };
  const Row rows[] = {
      {{}, true}, {{L"-local"}, true}, {{L"-i"}, false}, {{L"-u"}, false}, {{L"-x"}, false}};
  for (const Row& row : rows) {
    const fakes::Machine machine;
    bool closedBefore = false;
    const auto look = [&] {
      closedBefore = fakes::IsTaken(ControllerLock) || fakes::IsTaken(EngineLock);
    };
    fakes::service.whileServing = look;
    fakes::service.whileListening = look;
    Run(row.arguments);
    CHECK(fakes::IsTaken(ControllerLock) == row.closed);
    CHECK(fakes::IsTaken(EngineLock) == row.closed);
    CHECK_FALSE(closedBefore);
  }
}

TEST_CASE("in a console the service runs until the console is left") {
  const fakes::Machine machine;
  bool inConsoleMode = false;
  fakes::service.whileListening = [&] {
    inConsoleMode = ConsoleMode;
    CHECK(ConsoleCtrlHandler(0));
    CHECK_FALSE(fakes::service.listening);
  };
  const Ran ran = Run({L"-local"});
  CHECK(ran.exitCode == 0);
  CHECK(ran.output == "RPC server is listening...\n");
  CHECK(inConsoleMode);
  CHECK(ran.calls[0] == "service: install console handler");
  CHECK(ran.calls[1] == "settings: ReadSetting EnableZ7Feature");
  CHECK(ran.calls.back() == "report 1 SetServiceStatus failed, error code = 6\n");
}

}  // namespace dozewell
