#include <doctest/doctest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "base/utf8.h"
#include "ctl/fakes/client_fake.h"
#include "fakes/client_machine.h"
#include "fakes/clock_fake.h"
#include "fakes/settings_fake.h"
#include "settings/setting_names.h"
#include "support/calls.h"

namespace dozewell::ctl {
namespace {

using fakes::ClientMachine;
using fakes::ClientRun;
using fakes::Ctl;
using fakes::Fails;
using fakes::settings;

}  // namespace

TEST_CASE("what is learnt and set on this machine is explained") {
  const ClientMachine machine;
  ClientMachine::Provision();
  const std::string ignored = "warning: " + NarrowToUtf8(settings.dataFolder + L"cpredict.z7") +
                              ": ignored: it cannot be opened";
  ClientRun run = Ctl(machine, {"explain", "--at", "2026-11-21 18:00"});
  CHECK(run.exitCode == 0);
  CHECK(run.messages == Calls{ignored});
  const std::string leaves = " leaves the user's own timeout in place and arms no wake timer.\n";
  CHECK(run.output.starts_with("A suspend at Sat 2026-11-21 18:00" + leaves));
  run = Ctl(machine, {"explain", "--at", "2026-11-21T18:00:30", "--json"});
  CHECK(run.exitCode == 0);
  CHECK(run.output.starts_with("{\"at\":\"2026-11-21T18:00:30\",\"decision\":{"));
  fakes::clock.localTime = {9, 5, 8, 21, 10, 126, 6, 324, 0};
  CHECK(Ctl(machine, {"explain"}).output.starts_with("A suspend at Sat 2026-11-21 08:05" + leaves));
  // No folder is made for a user who only looks.
  CHECK(std::ranges::count(settings.calls, "GetDataFolder") == 0);
}

TEST_CASE("where rates are the predictor, they are explained") {
  const ClientMachine machine;
  ClientMachine::Provision();
  settings.defaults.predictorValues[{kPredictorSection, kPredictorName}] = fakes::Text("rates");
  const ClientRun run = Ctl(machine, {"explain", "--at", "2026-11-21 18:00"});
  CHECK(run.exitCode == 0);
  CHECK(run.output.starts_with("Suspended Sat 18:00, learnt from 0 sleeps.\n"));
  CHECK(Ctl(machine, {"explain", "--at", "2026-11-21 18:00", "--json"})
            .output.find("\"predictor\":\"rates\"") != std::string::npos);
}

TEST_CASE("an explanation says that the service does not act on it") {
  const ClientMachine machine;
  ClientMachine::Provision();
  settings.current.values = {{L"EnableZ7Feature", fakes::Number32(0)},
                             {L"DisablePrediction", fakes::Number32(1)}};
  const ClientRun run = Ctl(machine, {"explain"});
  CHECK(run.exitCode == 0);
  REQUIRE(run.messages.size() == 3);
  CHECK(run.messages[1] == "warning: the feature is off, so the service does none of this");
  CHECK(run.messages[2] == "warning: DisablePrediction is 1, so the service does none of this");
}

TEST_CASE("nothing is explained without usable settings, a folder, or a time") {
  const ClientMachine machine;
  Fails(machine, {"explain"}, 1,
        "SOFTWARE\\Corisk\\Z7: TimeResolution, DaysInCycle, MinutesInDay, FirstLastWeight, "
        "SecondLastWeight, AgregationWeight are missing: "
        "CyclicProbabilityPredictor::LoadDataIfExists - wrong configurations");
  ClientMachine::Provision();
  Fails(machine, {"explain", "--at", "noon"}, 2,
        "--at: not a local time \"YYYY-MM-DD HH:MM\" or UTC seconds since 1970: noon");
  fakes::clock.utcSeconds = -1;
  Fails(machine, {"explain"}, 1, "the clock cannot be read; give --at");
  fakes::clock.utcSeconds = 0;
  settings.dataFolder = L"";
  Fails(machine, {"explain"}, 1, "Windows does not say where the data folder is");
}

TEST_CASE("what only administrators may read is explained and reported to nobody else") {
  const ClientMachine machine;
  ClientMachine::Provision();
  const std::wstring folder = settings.dataFolder.substr(0, settings.dataFolder.size() - 1);
  for (const std::wstring& path : {folder, folder + L"\\cpredict.z7", folder + L"\\zs7state.dat"}) {
    fakes::client.denied = {path};
    for (const char* const command : {"explain", "report"}) {
      Fails(machine, {command}, 1,
            "only administrators may read what was learnt; try it as administrator");
    }
    CHECK(Ctl(machine, {"status"}).exitCode == 0);
  }
}

}  // namespace dozewell::ctl
