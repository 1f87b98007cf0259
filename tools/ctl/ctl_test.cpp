#include "ctl/ctl.h"

#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "ctl/fakes/client_fake.h"
#include "fakes/client_machine.h"
#include "support/calls.h"

namespace dozewell::ctl {
namespace {

using fakes::client;
using fakes::ClientMachine;
using fakes::ClientRun;
using fakes::Ctl;
using fakes::Fails;
using fakes::kServerUnavailable;

const std::vector<std::vector<std::string>> kServiceCommands = {
    {"ping"},
    {"enable"},
    {"disable"},
    {"driver"},
    {"wake", "get"},
    {"wake", "get", "1"},
    {"wake", "set", "0", "2026-11-21 06:30"},
    {"wake", "raw", "1"},
    {"wake", "raw", "1", "90"},
    {"power", "get"},
    {"power", "set", "ac", "sleep-after", "30m"},
    {"scheme", "get"},
    {"scheme", "set", "balanced"},
    {"strength", "get"},
    {"strength", "set", "1"},
    {"reset-history", "--yes"},
};

}  // namespace

TEST_CASE("no command reaches a service that does not answer") {
  const ClientMachine machine;
  client.unreachable = kServerUnavailable;
  client.service = {0, 1};
  for (const auto& command : kServiceCommands) {
    CAPTURE(command.front());
    Fails(machine, command, 3,
          "the service is stopped; as administrator, net start DozewellService starts it");
    std::vector<std::string> json = command;
    json.emplace_back("--json");
    CHECK(Ctl(machine, json).exitCode == 3);
  }
}

TEST_CASE("ping tells how long the service takes") {
  const ClientMachine machine;
  const ClientRun text = Ctl(machine, {"ping"});
  CHECK(text.exitCode == 0);
  CHECK(text.output.starts_with("The service answers, in "));
  CHECK(text.output.ends_with(" ms.\n"));
  const ClientRun json = Ctl(machine, {"ping", "--json"});
  CHECK(json.output.starts_with("{\"milliseconds\":"));
  CHECK(json.output.ends_with("}\n"));
  client.refused = {"Ping"};
  Fails(machine, {"ping"}, 1, "the service answers, and says that it does not work");
}

TEST_CASE("what lies out of a field's range does not reach the service") {
  const ClientMachine machine;
  const std::string timer = "TIMER: not 0 or 1: ";
  Fails(machine, {"wake", "set", "2", "2026-11-21 06:30"}, 2, timer + "2");
  Fails(machine, {"wake", "get", "-1"}, 2, timer + "-1");
  Fails(machine, {"wake", "raw", "x"}, 2, timer + "x");
  const std::string time = "TIME: not a local time from 2000-01-01 00:00 to 2127-12-31 23:59: ";
  Fails(machine, {"wake", "set", "0", "2128-01-01 00:00"}, 2, time + "2128-01-01 00:00");
  Fails(machine, {"wake", "set", "0", "1999-12-31 23:59"}, 2, time + "1999-12-31 23:59");
  Fails(machine, {"wake", "set", "0", "2026-02-30 00:00"}, 2,
        "TIME: not a local time \"YYYY-MM-DD HH:MM\" or UTC seconds since 1970: 2026-02-30 00:00");
  const std::string duration = "DURATION: not 0 to 1048575 minutes, such as 45m or 1h30m: ";
  Fails(machine, {"wake", "raw", "1", "1048576"}, 2, duration + "1048576");
  Fails(machine, {"wake", "raw", "1", "-1"}, 2, duration + "-1");
  Fails(machine, {"wake", "raw", "1", "soon"}, 2, duration + "soon");
  Fails(machine, {"power", "get", "both"}, 2, "SOURCE: not ac or dc: both");
  Fails(machine, {"power", "set", "2", "sleep-after", "1"}, 2, "SOURCE: not ac or dc: 2");
  Fails(machine, {"power", "set", "ac", "sleep", "1"}, 2,
        "SETTING: not display-off, sleep-after, hibernate-after, wake-timers or hybrid-sleep: "
        "sleep");
  Fails(machine, {"power", "set", "ac", "sleep-after", "71582789"}, 2,
        "sleep-after: not never or 1 to 71582788 minutes, such as 45m or 1h30m: 71582789");
  Fails(machine, {"power", "set", "ac", "wake-timers", "3"}, 2,
        "wake-timers: not off, on or important: 3");
  Fails(machine, {"power", "set", "ac", "hybrid-sleep", "2"}, 2, "hybrid-sleep: not off or on: 2");
  Fails(machine, {"scheme", "set", "3"}, 2,
        "SCHEME: not balanced, power-saver or high-performance: 3");
  const std::string strength = "STRENGTH: not a whole number from 0 to 2147483647: ";
  Fails(machine, {"strength", "set", "-1"}, 2, strength + "-1");
  Fails(machine, {"strength", "set", "2147483648"}, 2, strength + "2147483648");
  Fails(machine, {"strength", "set", "1.5"}, 2, strength + "1.5");
  CHECK(client.calls == Calls{});
}

}  // namespace dozewell::ctl
