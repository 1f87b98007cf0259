#include <doctest/doctest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "base/file.h"
#include "base/utf8.h"
#include "ctl/fakes/client_fake.h"
#include "fakes/client_machine.h"
#include "fakes/clock_fake.h"
#include "fakes/settings_fake.h"
#include "prediction/rates/rates_file.h"
#include "settings/setting_names.h"
#include "support/calls.h"
#include "support/local_times.h"

namespace dozewell::ctl {
namespace {

using fakes::ClientMachine;
using fakes::ClientRun;
using fakes::Ctl;
using fakes::Fails;
using fakes::settings;

// What the service logs that has run since it was told that the machine is in use at 08:00: a
// suspend at noon, and a resume at 08:00 the next day. It is 17:00 then.
void LogThreeEvents() {
  const auto seconds = [](const tm& time) { return static_cast<uint32_t>(SecondsFromTm(time)); };
  fakes::clock.utcSeconds = seconds(LocalTime(2026, 11, 21, 17));
  settings.current.values = {
      {L"StartTime", fakes::Number32(seconds(LocalTime(2026, 11, 20, 7, 59)))}};
  const auto log = [](const char* time, const std::string& text) {
    fakes::client.events.push_back(std::string("<Event><System><TimeCreated SystemTime='") + time +
                                   "Z'/></System><EventData><Data>" + text +
                                   "</Data></EventData></Event>");
  };
  log("2026-11-20T08:00:00", "20/11/2026 8:0:0 - Activating");
  log("2026-11-20T08:00:00", "Active");
  log("2026-11-20T12:00:00", "20/11/2026 12:0:0 - Suspend");
  log("2026-11-20T12:00:00", "Suspended");
  log("2026-11-21T08:00:00", "21/11/2026 8:0:0 - Activating");
  log("2026-11-21T08:00:00", "Active");
}

}  // namespace

TEST_CASE("what is learnt and set on this machine is explained") {
  const ClientMachine machine;
  ClientMachine::Provision();
  ClientMachine::SaveLearnt({{LocalTime(2026, 11, 20, 8), Activating}});
  ClientRun run = Ctl(machine, {"explain", "--at", "2026-11-21 18:00"});
  CHECK(run.exitCode == 0);
  CHECK(run.messages == Calls{});
  const std::string leaves = " leaves the user's own timeout in place and arms no wake timer.\n";
  const std::string asOf =
      "As of the last save, 2026-11-20 08:00:00, since it is not known when the service "
      "started.\n";
  CHECK(run.output.starts_with(asOf + "A suspend at Sat 2026-11-21 18:00" + leaves));
  run = Ctl(machine, {"explain", "--at", "2026-11-21T18:00:30", "--json"});
  CHECK(run.exitCode == 0);
  CHECK(run.output.starts_with("{\"at\":\"2026-11-21T18:00:30\",\"decision\":{"));
  CHECK(run.output.ends_with(
      ",\"asOf\":{\"now\":false,\"savedUntil\":\"2026-11-20T08:00:00\",\"eventsSince\":null,"
      "\"why\":\"it is not known when the service started\"}}\n"));
  fakes::clock.localTime = {9, 5, 8, 21, 10, 126, 6, 324, 0};
  CHECK(Ctl(machine, {"explain"})
            .output.starts_with(asOf + "A suspend at Sat 2026-11-21 08:05" + leaves));
  // No folder is made for a user who only looks.
  CHECK(std::ranges::count(settings.calls, "GetDataFolder") == 0);
}

TEST_CASE("where rates are the predictor, they are explained, with what is not saved yet") {
  const ClientMachine machine;
  ClientMachine::Provision();
  settings.defaults.predictorValues[{kPredictorSection, kPredictorName}] = fakes::Text("rates");
  const std::vector<std::string> command = {"explain", "--at", "2026-11-21 18:00"};
  const std::wstring file = settings.dataFolder + L"rates.z7";
  const std::string nothing =
      NarrowToUtf8(file) + " tells of no event; what the service has learnt is not known, since ";
  fakes::client.unreachable = fakes::kServerUnavailable;
  Fails(machine, command, 4, nothing + "the service does not answer");
  fakes::client.unreachable = 0;

  LogThreeEvents();
  ClientRun run = Ctl(machine, command);
  CHECK(run.exitCode == 0);
  CHECK(run.messages == Calls{});
  CHECK(
      run.output.starts_with("As of now: 3 events, of which nothing is saved yet.\n"
                             "Suspended Sat 18:00, learnt from 1 sleep.\n"));

  RatesState saved;
  saved.Take(Activating, SecondsFromTm(LocalTime(2026, 11, 20, 8)));
  CHECK(SaveRates(saved, file, false));
  run = Ctl(machine, command);
  CHECK(run.output.starts_with(
      "As of now: the last save, 2026-11-20 08:00:00, and 2 events since then.\n"
      "Suspended Sat 18:00, learnt from 1 sleep.\n"));
  run = Ctl(machine, {"explain", "--at", "2026-11-21 18:00", "--json"});
  CHECK(run.output.find("\"predictor\":\"rates\"") != std::string::npos);
  CHECK(run.output.ends_with(
      ",\"asOf\":{\"now\":true,\"savedUntil\":\"2026-11-20T08:00:00\",\"eventsSince\":2,"
      "\"why\":null}}\n"));
  CHECK(run.identity.ends_with("\"time\":\"2026-11-21T08:00:00\"}"));

  fakes::client.eventsError = 5;
  CHECK(Ctl(machine, command)
            .output.starts_with("As of the last save, 2026-11-20 08:00:00, since the event log "
                                "cannot be read (error 5).\n"
                                "Suspended Sat 18:00, learnt from 0 sleeps.\n"));
}

TEST_CASE("an explanation says that the service does not act on it") {
  const ClientMachine machine;
  ClientMachine::Provision();
  settings.current.values = {{L"EnableZ7Feature", fakes::Number32(0)},
                             {L"DisablePrediction", fakes::Number32(1)}};
  ClientMachine::SaveLearnt({});
  const ClientRun run = Ctl(machine, {"explain"});
  CHECK(run.exitCode == 0);
  CHECK(
      run.output.starts_with("As of the last save, without an event, since the feature is off.\n"));
  CHECK(run.messages == Calls{"warning: the feature is off, so the service does none of this",
                              "warning: DisablePrediction is 1, so the service does none of this"});
}

TEST_CASE("what the service has learnt since its last save counts, as its events tell it") {
  const ClientMachine machine;
  ClientMachine::Provision();
  const std::vector<TimeLineEvent> saved = {{LocalTime(2026, 11, 20, 8), Activating}};
  std::vector<TimeLineEvent> all = saved;
  all.push_back({LocalTime(2026, 11, 20, 12), Suspend});
  all.push_back({LocalTime(2026, 11, 21, 8), Activating});
  LogThreeEvents();
  const std::vector<std::string> command = {"explain", "--at", "2026-11-21 10:00"};
  const auto explain = [&] {
    const ClientRun run = Ctl(machine, command);
    CHECK(run.exitCode == 0);
    CHECK(run.messages == Calls{});
    const size_t end = run.output.find('\n');
    return std::pair(run.output.substr(0, end), run.output.substr(end + 1));
  };
  const auto [unsaved, words] = explain();
  CHECK(unsaved == "As of now: 3 events, of which nothing is saved yet.");
  ClientMachine::SaveLearnt(saved);
  CHECK(explain() ==
        std::pair<std::string, std::string>(
            "As of now: the last save, 2026-11-20 08:00:00, and 2 events since then.", words));
  const ClientRun run = Ctl(machine, {"explain", "--at", "2026-11-21 10:00", "--json"});
  CHECK(run.output.ends_with(
      ",\"asOf\":{\"now\":true,\"savedUntil\":\"2026-11-20T08:00:00\",\"eventsSince\":2,"
      "\"why\":null}}\n"));
  CHECK(run.identity.ends_with("\"time\":\"2026-11-21T08:00:00\"}"));
  RemoveFile(settings.dataFolder + L"cpredict.z7");
  ClientMachine::SaveLearnt(all);
  CHECK(explain().second == words);
  fakes::client.eventsError = 5;
  CHECK(explain().first ==
        "As of the last save, 2026-11-21 08:00:00, since the event log cannot be read (error 5).");
}

TEST_CASE("nothing is explained or reported where nothing is known to be learnt") {
  const ClientMachine machine;
  ClientMachine::Provision();
  const std::string ignored = NarrowToUtf8(settings.dataFolder + L"cpredict.z7") + ": ignored: ";
  const std::string unknown = "; what the service has learnt is not known, since ";
  fakes::client.unreachable = fakes::kServerUnavailable;
  const std::string notOpened =
      ignored + "it cannot be opened" + unknown + "the service does not answer";
  for (const char* const command : {"explain", "report"}) Fails(machine, {command}, 4, notOpened);
  CHECK_FALSE(OpenFile(L"dozewell-report.html", "rb"));
  WriteWholeFile(settings.dataFolder + L"cpredict.z7", "no data", 7);
  Fails(machine, {"explain"}, 4,
        ignored + "it is not of the size that the configured cycle needs" + unknown +
            "the service does not answer");
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
