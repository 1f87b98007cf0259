#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "ctl/fakes/client_fake.h"
#include "fakes/client_machine.h"
#include "fakes/settings_fake.h"
#include "settings/setting_names.h"
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

TEST_CASE("the strength is shown and chosen") {
  const ClientMachine machine;
  fakes::settings.current.predictorValues[{kPredictorSection, "Best0"}] = fakes::Text("-1");
  fakes::settings.current.predictorValues[{kPredictorSection, "Best2147483647"}] =
      fakes::Text("-1");
  Works(machine, {"strength", "set", "2147483647"}, "The strength is now 2147483647.\n");
  Works(machine, {"strength", "get"}, "The strength is 2147483647.\n");
  Works(machine, {"strength", "set", "0", "--json"}, "{\"strength\":0}\n");
  Works(machine, {"strength", "get", "--json"}, "{\"strength\":0}\n");
  CHECK(client.calls == Calls{"SetStrength 2147483647", "SetStrength 0"});
  client.refused = {"GetStrength", "SetStrength"};
  Fails(machine, {"strength", "get"}, 1, "the service could not read the strength");
  Fails(machine, {"strength", "set", "1"}, 1, "the service could not store the strength");
}

TEST_CASE("a strength for which no search has stored anything is warned of") {
  const ClientMachine machine;
  const ClientRun run = Ctl(machine, {"strength", "set", "7", "--json"});
  CHECK(run.exitCode == 0);
  CHECK(run.output == "{\"strength\":7}\n");
  CHECK(run.messages == Calls{"warning: the optimizer has stored nothing for strength 7 yet"});
}

TEST_CASE("the history is reset only when the user says yes") {
  ClientMachine machine;
  ClientRun run = Ctl(machine, {"reset-history"});
  CHECK(run.exitCode == 1);
  CHECK(run.questions == Calls{"The service will forget all that it has learnt. Go on?"});
  CHECK(run.messages == Calls{"nothing was reset"});
  CHECK(client.calls == Calls{});
  machine.answer = true;
  run = Ctl(machine, {"reset-history"});
  CHECK(run.exitCode == 0);
  CHECK(run.questions.size() == 1);
  CHECK(run.output == "The service has been told to forget.\n");
  CHECK(client.calls == Calls{"ResetHistory"});
  run = Ctl(machine, {"reset-history", "--yes", "--json"});
  CHECK(run.questions == Calls{});
  CHECK(run.output == "{\"reset\":true}\n");
  CHECK(client.calls == Calls{"ResetHistory", "ResetHistory"});
  client.refused = {"ResetHistory"};
  Fails(machine, {"reset-history", "--yes"}, 1,
        "the history was not reset, since the controller does not run; dozewellctl status shows "
        "why");
}

}  // namespace dozewell::ctl
