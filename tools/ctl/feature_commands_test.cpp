#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "base/file.h"
#include "ctl/fakes/client_fake.h"
#include "fakes/client_machine.h"
#include "prediction/tracker_data.h"
#include "support/calls.h"

namespace dozewell::ctl {
namespace {

using fakes::client;
using fakes::ClientMachine;
using fakes::ClientRun;
using fakes::Ctl;
using fakes::Fails;
using fakes::Works;

}  // namespace

TEST_CASE("the feature is switched") {
  const ClientMachine machine;
  Works(machine, {"disable", "--yes"}, "The feature is off.\n");
  CHECK_FALSE(client.featureEnabled);
  Works(machine, {"enable"}, "The feature is on.\n");
  CHECK(client.featureEnabled);
  Works(machine, {"disable", "--json", "--yes"}, "{\"featureEnabled\":false}\n");
  Works(machine, {"enable", "--json"}, "{\"featureEnabled\":true}\n");
  CHECK(client.calls == Calls{"SetFeatureEnabled 0", "SetFeatureEnabled 1", "SetFeatureEnabled 0",
                              "SetFeatureEnabled 1"});
}

TEST_CASE("the feature is switched off only when the user accepts what is lost") {
  ClientMachine machine;
  const std::string loss =
      "The service will lose what it has learnt since it last saved that; nothing is saved yet. To "
      "keep it, run net stop DozewellService, which saves it, and net start DozewellService first, "
      "as administrator.";
  ClientRun run = Ctl(machine, {"disable"});
  CHECK(run.exitCode == 1);
  CHECK(run.questions == Calls{loss + " Go on?"});
  CHECK(run.messages == Calls{"the feature stays on"});
  CHECK(client.calls == Calls{});
  machine.answer = true;
  run = Ctl(machine, {"disable"});
  CHECK(run.exitCode == 0);
  CHECK(run.output == "The feature is off.\n");
  CHECK(client.calls == Calls{"SetFeatureEnabled 0"});
  // Nothing runs that could lose something.
  run = Ctl(machine, {"disable"});
  CHECK(run.exitCode == 0);
  CHECK(run.questions == Calls{});
}

TEST_CASE("the feature is not switched off unasked where there is no terminal") {
  ClientMachine machine;
  machine.answer = true;
  machine.isTerminal = false;
  const ClientRun run = Ctl(machine, {"disable", "--json"});
  CHECK(run.exitCode == 2);
  CHECK(run.questions == Calls{});
  REQUIRE(run.messages.size() == 1);
  CHECK(run.messages[0].starts_with(
      "disable asks first, and there is no terminal to ask at; --yes does not ask. The service "
      "will lose what it has learnt since it last saved that; nothing is saved yet. To keep it, "));
  CHECK(client.calls == Calls{});
  Works(machine, {"disable", "--yes"}, "The feature is off.\n");
}

TEST_CASE("a client that switches the feature off says where the saved data end") {
  const ClientMachine machine;
  TrackerData header = {};
  header.lastTime = {0, 0, 8, 5, 1, 126, 4, 35, 0};
  REQUIRE(WriteWholeFile(machine.Folder().File(L"cpredict.z7"), &header, sizeof(header)));
  const auto saysThatSavedEndsAt = [&machine](const std::string& time) {
    const ClientRun run = Ctl(machine, {"disable"});
    REQUIRE(run.questions.size() == 1);
    CHECK(run.questions[0].starts_with(
        "The service will lose what it has learnt since it last saved that; what is saved ends "
        "at " +
        time + ". To keep it,"));
  };
  saysThatSavedEndsAt("2026-02-05 08:00:00");
  // Newer data wait until the file is free.
  header.lastTime = {0, 0, 9, 6, 1, 126, 5, 36, 0};
  REQUIRE(WriteWholeFile(machine.Folder().File(L"cpredict.z7.new"), &header, sizeof(header)));
  saysThatSavedEndsAt("2026-02-06 09:00:00");
}

TEST_CASE("a feature that was switched without the driver's timers is reported") {
  const ClientMachine machine;
  ClientMachine::Provision();
  client.refused = {"driver"};
  Fails(machine, {"disable", "--yes"}, 1,
        "the feature is off now, but the driver's timers were not switched: the driver did not "
        "take it");
  client.refused = {"driver", "GetDriverEnabled"};
  Fails(machine, {"enable"}, 1,
        "the feature is on now, but the driver's timers were not switched: the service has no "
        "driver device, or the driver does not answer, or the controller could not be started");
}

TEST_CASE("a feature that was not switched is reported with the cause") {
  const ClientMachine machine;
  client.featureEnabled = false;
  client.refused = {"SetFeatureEnabled"};
  Fails(machine, {"enable"}, 1,
        "the controller cannot be built: SOFTWARE\\Corisk\\Z7: TimeResolution, DaysInCycle, "
        "MinutesInDay, FirstLastWeight, SecondLastWeight, AgregationWeight are missing: "
        "CyclicProbabilityPredictor::LoadDataIfExists - wrong configurations");
  ClientMachine::Provision();
  Fails(machine, {"enable"}, 1, "the service could not switch the feature");
  client.featureEnabled = true;
  Fails(machine, {"disable", "--yes"}, 1, "the service could not switch the feature");
}

TEST_CASE("the driver's timers are enabled or not") {
  const ClientMachine machine;
  Works(machine, {"driver"}, "The driver's wake timers are enabled.\n");
  Works(machine, {"driver", "--json"}, "{\"driverEnabled\":true}\n");
  client.driverEnabled = false;
  Works(machine, {"driver"}, "The driver's wake timers are not enabled.\n");
  Works(machine, {"driver", "--json"}, "{\"driverEnabled\":false}\n");
  client.refused = {"GetDriverEnabled"};
  Fails(machine, {"driver"}, 1, "the service has no driver device, or the driver does not answer");
}

}  // namespace dozewell::ctl
