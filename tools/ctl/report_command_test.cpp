#include <doctest/doctest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "base/file.h"
#include "base/utf8.h"
#include "fakes/client_machine.h"
#include "fakes/clock_fake.h"
#include "fakes/power_fake.h"
#include "fakes/settings_fake.h"
#include "support/calls.h"
#include "support/local_times.h"
#include "support/mornings.h"
#include "support/text_parts.h"

namespace dozewell::ctl {
namespace {

using fakes::ClientMachine;
using fakes::ClientRun;
using fakes::Ctl;
using fakes::Fails;
using fakes::settings;

// As a user names the folder, in a way that every system takes.
std::string UserFolder() {
  std::string folder = NarrowToUtf8(settings.dataFolder);
  std::ranges::replace(folder, '\\', '/');
  return folder;
}

std::string Content(const std::string& name) {
  const auto bytes = ReadWholeFile(PathFromSystem(name)).value();
  return {bytes.begin(), bytes.end()};
}

}  // namespace

TEST_CASE("a report shows this machine's settings, files and timeout") {
  const ClientMachine machine;
  ClientMachine::Provision();
  fakes::clock.localTime = {9, 5, 8, 21, 10, 126, 6, 324, 0};
  fakes::power = {};
  fakes::power.acLineStatus = kLineOffline;
  fakes::power.values["balanced DC hibernate"] = 45 * 60;
  const std::string folder = NarrowToUtf8(settings.dataFolder);
  const std::string page = UserFolder() + "r.html";
  ClientMachine::SaveLearnt({{LocalTime(2026, 11, 20, 8), Activating}});
  const std::vector<std::string> warnings = {"warning: " + folder +
                                             "zs7state.dat: ignored: it cannot be opened"};
  ClientRun run = Ctl(machine, {"report", "--out", page});
  CHECK(run.exitCode == 0);
  CHECK(run.messages == warnings);
  std::string html = Content(page);
  CHECK(run.output == page + ": " + std::to_string(html.size()) + " bytes\n");
  CHECK(Contains(html, "Dozewell report of Sat 21 Nov 2026, 08:05. Nothing is recorded yet."));
  CHECK(CountOf("<p class=\"note\">", html) == 2);
  CHECK(Contains(html,
                 "<p class=\"note\">As of the last save, 2026-11-20 08:00:00, since it is "
                 "not known when the service started.</p>"));
  CHECK(Contains(html, "OFFICE-7; zone W. Europe Standard Time; data to 2026-11-20 08:00:00; "));
  CHECK(Contains(html, "Nothing is known yet"));

  const std::vector<HistoryRecord> history = Mornings(3);
  WriteWholeFile(settings.dataFolder + L"zs7state.dat", history.data(),
                 history.size() * sizeof(HistoryRecord));
  run = Ctl(machine, {"report", "--out", page});
  CHECK(Contains(Content(page), "the score of a fixed timeout of 45 minutes"));
  fakes::power.acLineStatus = kLineUnknown;
  run = Ctl(machine, {"report", "--json", "--out", page});
  html = Content(page);
  CHECK(run.output == "{\"file\":\"" + page + "\",\"bytes\":" + std::to_string(html.size()) +
                          ",\"asOf\":{\"now\":false,\"savedUntil\":\"2026-11-20T08:00:00\","
                          "\"eventsSince\":null,\"why\":\"it is not known when the service "
                          "started\"}}\n");
  CHECK(run.messages == Calls{});
  CHECK(Contains(html, "The history has 6 records"));
  // There is none for AC.
  CHECK(Contains(html, "the score of a fixed timeout of 180 minutes"));
  CHECK(std::ranges::count(settings.calls, "GetDataFolder") == 0);
}

TEST_CASE("a report is never written over what it is made of") {
  const ClientMachine machine;
  ClientMachine::Provision();
  WriteWholeFile(settings.dataFolder + L"zs7state.dat.new", "", 0);
  for (const auto& [name, what] : {std::pair{"zs7state.dat", "the service's history"},
                                   {"zs7state.dat.new", "the service's history"},
                                   {"cpredict.z7", "the service's data file"}}) {
    const std::string output = UserFolder() + name;
    Fails(machine, {"report", "--out", output}, 1,
          output + ": cannot be written: it is also " + what);
  }
}

TEST_CASE("a report is made of the newest history, and says when it is damaged or none") {
  const ClientMachine machine;
  ClientMachine::Provision();
  ClientMachine::SaveLearnt({});
  const std::string folder = NarrowToUtf8(settings.dataFolder);
  const std::string page = UserFolder() + "r.html";
  const std::vector<HistoryRecord> history = Mornings(3);
  WriteWholeFile(settings.dataFolder + L"zs7state.dat", "torn", 4);
  WriteWholeFile(settings.dataFolder + L"zs7state.dat.new", history.data(),
                 history.size() * sizeof(HistoryRecord) - 1);
  const ClientRun run = Ctl(machine, {"report", "--out", page});
  CHECK(run.exitCode == 0);
  CHECK(run.messages.back() ==
        "warning: " + folder + "zs7state.dat: damaged: an incomplete record at the end");
  CHECK(Contains(Content(page), "The history has 5 records"));
  WriteWholeFile(settings.dataFolder + L"zs7state.dat.new", "1,0", 3);
  Fails(machine, {"report", "--out", page}, 1,
        folder +
            "zs7state.dat: no history (zs7state.dat): it looks like text; the name of a CSV "
            "history ends in .csv");
}

TEST_CASE("no report is written without usable settings, a clock, or a place for it") {
  const ClientMachine machine;
  const std::string page = UserFolder() + "r.html";
  Fails(machine, {"report", "--out", page}, 1,
        "SOFTWARE\\Corisk\\Z7: TimeResolution, DaysInCycle, MinutesInDay, FirstLastWeight, "
        "SecondLastWeight, AgregationWeight are missing: "
        "CyclicProbabilityPredictor::LoadDataIfExists - wrong configurations");
  ClientMachine::Provision();
  ClientMachine::SaveLearnt({});
  const ClientRun run = Ctl(machine, {"report", "--out", UserFolder()});
  CHECK(run.exitCode == 1);
  CHECK(run.messages.back() == UserFolder() + ": cannot be written: not a regular file");
  fakes::clock.utcSeconds = -1;
  Fails(machine, {"report", "--out", page}, 1, "the clock cannot be read");
  CHECK_FALSE(OpenFile(PathFromSystem(page), "rb"));
}

}  // namespace dozewell::ctl
