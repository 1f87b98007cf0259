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
using fakes::Fails;
using fakes::Works;

}  // namespace

TEST_CASE("the power scheme's settings are shown side by side") {
  const ClientMachine machine;
  client.power = {PowerTimeouts{10, 30, 180, 1, 1}, PowerTimeouts{5, 15, 0, 2, 0}};
  Works(machine, {"power", "get"},
        "                    ac                  dc\n"
        "  display-off       10 min              5 min\n"
        "  sleep-after       30 min              15 min\n"
        "  hibernate-after   3 h 00 min          never\n"
        "  wake-timers       on                  important\n"
        "  hybrid-sleep      on                  off\n");
  Works(machine, {"power", "get", "dc"},
        "                    dc\n"
        "  display-off       5 min\n"
        "  sleep-after       15 min\n"
        "  hibernate-after   never\n"
        "  wake-timers       important\n"
        "  hybrid-sleep      off\n");
  Works(machine, {"power", "get", "ac", "--json"},
        "{\"ac\":{\"displayOffMinutes\":10,\"sleepAfterMinutes\":30,\"hibernateAfterMinutes\":180,"
        "\"allowWakeTimers\":1,\"allowHybridSleep\":1}}\n");
}

TEST_CASE("a machine that lacks a setting shows the others") {
  const ClientMachine machine;
  client.power = {PowerTimeouts{10, 30, 180, 1, 1}, PowerTimeouts{5, 15, 0, 2, 0}};
  client.missingPowerSettings = 0x12;
  Works(machine, {"power", "get", "dc"},
        "                    dc\n"
        "  display-off       5 min\n"
        "  sleep-after       not available\n"
        "  hibernate-after   never\n"
        "  wake-timers       important\n"
        "  hybrid-sleep      not available\n");
  Works(machine, {"power", "get", "dc", "--json"},
        "{\"dc\":{\"displayOffMinutes\":5,\"sleepAfterMinutes\":null,\"hibernateAfterMinutes\":0,"
        "\"allowWakeTimers\":2,\"allowHybridSleep\":null}}\n");
  client.missingPowerSettings = 0x1F;
  Fails(machine, {"power", "get"}, 1, "the service could not read the active power scheme");
}

TEST_CASE("one setting of the power scheme is written at a time") {
  const ClientMachine machine;
  Works(machine, {"power", "set", "ac", "display-off", "10"}, "display-off for ac is 10 min.\n");
  Works(machine, {"power", "set", "dc", "sleep-after", "never"}, "sleep-after for dc is never.\n");
  Works(machine, {"power", "set", "dc", "hibernate-after", "3h", "--json"},
        "{\"source\":\"dc\",\"hibernateAfterMinutes\":180}\n");
  Works(machine, {"power", "set", "ac", "wake-timers", "important"},
        "wake-timers for ac is important.\n");
  Works(machine, {"power", "set", "ac", "hybrid-sleep", "off"}, "hybrid-sleep for ac is off.\n");
  CHECK(client.calls == Calls{"SetPowerSettings 1 0 10 0 0 0 0", "SetPowerSettings 2 1 0 0 0 0 0",
                              "SetPowerSettings 4 1 0 0 180 0 0", "SetPowerSettings 8 0 0 0 0 2 0",
                              "SetPowerSettings 16 0 0 0 0 0 0"});
  client.refused = {"SetPowerSettings"};
  Fails(machine, {"power", "set", "ac", "display-off", "10"}, 1,
        "the service could not write display-off into the active power scheme");
}

TEST_CASE("the active power scheme is shown and chosen") {
  const ClientMachine machine;
  Works(machine, {"scheme", "set", "high-performance"},
        "The active power scheme is now high-performance.\n");
  Works(machine, {"scheme", "get"}, "The active power scheme is high-performance.\n");
  Works(machine, {"scheme", "set", "power-saver", "--json"}, "{\"scheme\":\"power-saver\"}\n");
  Works(machine, {"scheme", "get", "--json"}, "{\"scheme\":\"power-saver\"}\n");
  CHECK(client.calls == Calls{"SetActiveScheme 2", "SetActiveScheme 1"});
  client.refused = {"GetActiveScheme", "SetActiveScheme"};
  Fails(machine, {"scheme", "get"}, 1,
        "the active power scheme is not balanced, power-saver or high-performance, or could not "
        "be read");
  Fails(machine, {"scheme", "set", "balanced"}, 1,
        "Windows did not make balanced the active power scheme; it may not be there");
}

}  // namespace dozewell::ctl
