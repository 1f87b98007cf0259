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

TEST_CASE("the feature is switched") {
  const ClientMachine machine;
  Works(machine, {"disable"}, "The feature is off.\n");
  CHECK_FALSE(client.featureEnabled);
  Works(machine, {"enable"}, "The feature is on.\n");
  CHECK(client.featureEnabled);
  Works(machine, {"disable", "--json"}, "{\"featureEnabled\":false}\n");
  Works(machine, {"enable", "--json"}, "{\"featureEnabled\":true}\n");
  CHECK(client.calls == Calls{"SetFeatureEnabled 0", "SetFeatureEnabled 1", "SetFeatureEnabled 0",
                              "SetFeatureEnabled 1"});
}

TEST_CASE("a feature that was switched without the driver's timers is reported") {
  const ClientMachine machine;
  ClientMachine::Provision();
  client.refused = {"driver"};
  Fails(machine, {"disable"}, 1,
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
        "the controller cannot be built: "
        "CyclicProbabilityPredictor::LoadDataIfExists - wrong configurations");
  ClientMachine::Provision();
  Fails(machine, {"enable"}, 1, "the service could not switch the feature");
  client.featureEnabled = true;
  Fails(machine, {"disable"}, 1, "the service could not switch the feature");
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
