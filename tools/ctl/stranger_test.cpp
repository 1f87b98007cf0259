#include "ctl/stranger.h"

#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "ctl/fakes/client_fake.h"
#include "ctl/service_query.h"
#include "fakes/client_machine.h"
#include "service/service_host.h"

namespace dozewell::ctl {
namespace {

using fakes::client;
using fakes::ClientMachine;
using fakes::Ctl;

using Messages = std::vector<std::string>;

const std::string kWarning =
    "warning: process 4711 answers in the service's place; unless it is DozewellService -local in "
    "a console, do not trust it";

}  // namespace

TEST_CASE("the user is warned when another process than the service's serves its pipe") {
  const ClientMachine machine;
  client.pipeServer = 4711;
  for (const ServiceQuery service :
       {ServiceQuery{0, kServiceRunning, 815}, ServiceQuery{0, kServiceStopped, 0},
        ServiceQuery{0, kServiceStartPending, 815}}) {
    client.service = service;
    CHECK(Ctl(machine, {"strength", "get"}).messages == Messages{kWarning});
  }
  client.unreachable = fakes::kServerUnavailable;
  const Messages messages = Ctl(machine, {"strength", "get"}).messages;
  REQUIRE(messages.size() == 2);
  CHECK(messages.front() == kWarning);
}

TEST_CASE("the user is not warned of the service, or of what cannot be compared with it") {
  const ClientMachine machine;
  client.pipeServer = 4711;
  for (const ServiceQuery service :
       {ServiceQuery{0, kServiceRunning, 4711}, ServiceQuery{kErrorServiceMissing, 0},
        ServiceQuery{kErrorAccessDenied, 0}}) {
    client.service = service;
    CHECK(Ctl(machine, {"strength", "get"}).messages.empty());
  }
  client.service = {0, kServiceRunning, 815};
  client.pipeServer = std::nullopt;
  CHECK(Ctl(machine, {"strength", "get"}).messages.empty());
}

TEST_CASE("a command that does not call the service looks at no pipe") {
  const ClientMachine machine;
  ClientMachine::Provision();
  client.pipeServer = 4711;
  client.service = {0, kServiceRunning, 815};
  CHECK(Ctl(machine, {"watch"}).messages.empty());
}

}  // namespace dozewell::ctl
