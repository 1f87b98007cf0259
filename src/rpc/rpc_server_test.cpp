#include "rpc/rpc_server.h"

#include <doctest/doctest.h>

#include <string>

#include "fakes/journal.h"
#include "fakes/machine.h"
#include "fakes/service_fake.h"
#include "fakes/settings_fake.h"
#include "support/calls.h"
#include "support/captured_output.h"

namespace dozewell {
namespace {

const Calls kServed = {"service: use endpoint",
                       "service: register interface",
                       "service: register authentication",
                       "service: listen",
                       "settings: WriteSetting ServiceStatus 0",
                       "service: wait"};
const char* const kAnnounced = "RPC server is listening...\n";

// The first calls of kServed, and a report.
Calls Until(size_t count, const std::string& report) {
  Calls calls(kServed.begin(), kServed.begin() + static_cast<std::ptrdiff_t>(count));
  calls.push_back(report);
  return calls;
}

}  // namespace

TEST_CASE("the server is set up, announced and waited for") {
  const fakes::Machine machine;
  fakes::service.whileListening = [] { StopRPCServer(); };
  CHECK(OutputOf(StartRPCServer) == kAnnounced);
  Calls calls = kServed;
  calls.emplace_back("service: stop listening");
  CHECK(fakes::TakeJournal() == calls);
  CHECK(fakes::settings.current.values[L"ServiceStatus"] == fakes::Number32(0));
}

TEST_CASE("a step of the set-up that fails is reported with its status and ends the start") {
  struct Row {
    size_t failing;
    const char* report;
  };
  const Row rows[] = {
      {1, "report 1 RpcServerUseProtseqEp returned 0x6cc\n"},
      {2, "report 1 RpcServerRegisterIf returned 0x6cc\n"},
      {3, "report 1 StartRPCServer: RpcServerRegisterAuthInfo() failed!"},
      {4, "report 1 RpcServerListen returned: 0x6cc\n"},
  };
  for (const Row& row : rows) {
    const fakes::Machine machine;
    fakes::service.failer.firstFailing = static_cast<int>(row.failing);
    fakes::service.error = 1740;
    CHECK(OutputOf(StartRPCServer).empty());
    CHECK(fakes::TakeJournal() == Until(row.failing, row.report));
    CHECK_FALSE(fakes::settings.current.values.contains(L"ServiceStatus"));
  }
}

TEST_CASE("a wait that fails is reported") {
  const fakes::Machine machine;
  fakes::service.failer.firstFailing = 5;
  CHECK(OutputOf(StartRPCServer) == kAnnounced);
  CHECK(fakes::TakeJournal() ==
        Until(6, "report 1 StartRPCServer: RpcMgmtWaitServerListen() failed!"));
}

TEST_CASE("a status that cannot be written does not keep the server from serving") {
  const fakes::Machine machine;
  fakes::settings.failer.firstFailing = 1;
  CHECK(OutputOf(StartRPCServer) == kAnnounced);
  CHECK(fakes::TakeJournal() == kServed);
}

TEST_CASE("a stop that comes before the server listens ends it at once, and the next one serves") {
  const fakes::Machine machine;
  StopRPCServer();
  fakes::TakeJournal();
  bool listening = true;
  fakes::service.whileListening = [&] { listening = fakes::service.listening; };
  CHECK(OutputOf(StartRPCServer) == kAnnounced);
  CHECK(fakes::TakeJournal() == Joined({Calls(kServed.begin(), kServed.begin() + 4),
                                        {"service: stop listening"},
                                        Calls(kServed.begin() + 4, kServed.end())}));
  CHECK_FALSE(listening);
  OutputOf(StartRPCServer);
  CHECK(fakes::TakeJournal() == kServed);
  CHECK(listening);
}

TEST_CASE("a stop that fails is reported") {
  const fakes::Machine machine;
  StopRPCServer();
  CHECK(fakes::TakeJournal() == Calls{"service: stop listening"});
  fakes::service.failer = {.firstFailing = 1, .failures = 1, .calls = 0};
  StopRPCServer();
  CHECK(fakes::TakeJournal() ==
        Calls{"service: stop listening",
              "report 1 StopRPCServer: RpcMgmtStopServerListening() failed!"});
}

}  // namespace dozewell
