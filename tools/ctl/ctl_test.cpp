#include "ctl/ctl.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "base/file.h"
#include "base/utf8.h"
#include "ctl/fakes/client_fake.h"
#include "ctl/fakes/utc_time_fake.h"
#include "fakes/clock_fake.h"
#include "fakes/power_fake.h"
#include "fakes/settings_fake.h"
#include "prediction/configurations.h"
#include "support/mornings.h"
#include "support/temp_folder.h"
#include "support/text_parts.h"

namespace dozewell::ctl {
namespace {

using fakes::client;
using fakes::settings;

constexpr uint32_t kServerUnavailable = 1722;

struct Run {
  int exitCode;
  std::string output;
  std::vector<std::string> messages;
  std::vector<std::string> questions;
};

// A machine on which the client finds what the fakes hold, all good at first.
class Machine {
 public:
  Machine() {
    client = {};
    fakes::ResetSettings();
    settings.dataFolder = folder_.File(L"");
    fakes::clock = {};
    fakes::utcOffsetSeconds = 0;
  }

  void Provision() {
    settings.defaults.values = {{L"TimeResolution", fakes::Number32(30)},
                                {L"TotalAttempts", fakes::Number32(3)},
                                {L"CurrentAttempt", fakes::Number32(3)},
                                {L"ServiceFeedback", fakes::Number32(1)}};
    for (const auto& [name, value] : {std::pair{"DaysInCycle", "1"},
                                      {"MinutesInDay", "1440"},
                                      {"FirstLastWeight", "2"},
                                      {"SecondLastWeight", "1"},
                                      {"AgregationWeight", "1"},
                                      {"StrengthHigh", "70"},
                                      {"StrengthLow", "30"}}) {
      settings.defaults.predictorValues[{kPredictorSection, name}] = fakes::Text(value);
    }
  }

  std::wstring DataFile() const { return settings.dataFolder + L"cpredict.z7"; }

  bool answer = false;  // to every question

 private:
  TempFolder folder_;
};

Run Ctl(const Machine& machine, const std::vector<std::string>& arguments) {
  Run run = {};
  const Console console = {[&run](const std::string& output) { run.output += output; },
                           [&run](const std::string& message) { run.messages.push_back(message); },
                           [&run, &machine](const std::string& question) {
                             run.questions.push_back(question);
                             return machine.answer;
                           }};
  run.exitCode = RunCtl(arguments, console);
  return run;
}

void Works(const Machine& machine, const std::vector<std::string>& arguments,
           const std::string& output) {
  const Run run = Ctl(machine, arguments);
  CHECK(run.output == output);
  CHECK(run.messages == std::vector<std::string>{});
  CHECK(run.exitCode == 0);
}

void Fails(const Machine& machine, const std::vector<std::string>& arguments, int exitCode,
           const std::string& message) {
  const Run run = Ctl(machine, arguments);
  CHECK(run.output == "");
  CHECK(run.messages == std::vector<std::string>{message});
  CHECK(run.exitCode == exitCode);
}

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

using Calls = std::vector<std::string>;

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

TEST_CASE("no command reaches a service that does not answer") {
  const Machine machine;
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
  const Machine machine;
  const Run text = Ctl(machine, {"ping"});
  CHECK(text.exitCode == 0);
  CHECK(text.output.starts_with("The service answers, in "));
  CHECK(text.output.ends_with(" ms.\n"));
  const Run json = Ctl(machine, {"ping", "--json"});
  CHECK(json.output.starts_with("{\"milliseconds\":"));
  CHECK(json.output.ends_with("}\n"));
  client.refused = {"Ping"};
  Fails(machine, {"ping"}, 1, "the service answers, and says that it does not work");
}

TEST_CASE("the feature is switched") {
  Machine machine;
  Works(machine, {"disable"}, "The feature is off.\n");
  CHECK_FALSE(client.featureEnabled);
  Works(machine, {"enable"}, "The feature is on.\n");
  CHECK(client.featureEnabled);
  Works(machine, {"disable", "--json"}, "{\"featureEnabled\":false}\n");
  Works(machine, {"enable", "--json"}, "{\"featureEnabled\":true}\n");
  CHECK(client.calls == Calls{"SetFeatureEnabled 0", "SetFeatureEnabled 1", "SetFeatureEnabled 0",
                              "SetFeatureEnabled 1"});
}

TEST_CASE("a feature that was switched without the driver's timers is told so") {
  Machine machine;
  machine.Provision();
  client.refused = {"driver"};
  Fails(machine, {"disable"}, 1,
        "the feature is off now, but the driver's timers were not switched: the driver did not "
        "take it");
  client.refused = {"driver", "GetDriverEnabled"};
  Fails(machine, {"enable"}, 1,
        "the feature is on now, but the driver's timers were not switched: the service has no "
        "driver device, or the driver does not answer, or the controller could not be started");
}

TEST_CASE("a feature that was not switched is told with the cause") {
  Machine machine;
  client.featureEnabled = false;
  client.refused = {"SetFeatureEnabled"};
  Fails(machine, {"enable"}, 1,
        "the controller cannot be built: "
        "CyclicProbabilityPredictor::LoadDataIfExists - wrong configurations");
  machine.Provision();
  Fails(machine, {"enable"}, 1, "the service could not switch the feature");
  client.featureEnabled = true;
  Fails(machine, {"disable"}, 1, "the service could not switch the feature");
}

TEST_CASE("the driver's timers are enabled or not") {
  const Machine machine;
  Works(machine, {"driver"}, "The driver's wake timers are enabled.\n");
  Works(machine, {"driver", "--json"}, "{\"driverEnabled\":true}\n");
  client.driverEnabled = false;
  Works(machine, {"driver"}, "The driver's wake timers are not enabled.\n");
  Works(machine, {"driver", "--json"}, "{\"driverEnabled\":false}\n");
  client.refused = {"GetDriverEnabled"};
  Fails(machine, {"driver"}, 1, "the service has no driver device, or the driver does not answer");
}

TEST_CASE("a wake timer is armed for a time") {
  const Machine machine;
  Works(machine, {"wake", "set", "0", "2026-11-21 06:30"},
        "Timer 0 is armed for 2026-11-21 06:30.\n");
  Works(machine, {"wake", "set", "1", "2127-12-31T23:59", "--json"},
        "{\"timer\":1,\"time\":\"2127-12-31 23:59\"}\n");
  CHECK(client.calls == Calls{"SetWakeTime 0 30 6 21 11 26", "SetWakeTime 1 59 23 31 12 127"});
  client.refused = {"SetWakeTime"};
  Fails(machine, {"wake", "set", "0", "2026-11-21 06:30"}, 1,
        "the timer was not armed: the service has no driver device, or the driver did not take it");
}

TEST_CASE("a wake timer is armed for a duration") {
  const Machine machine;
  Works(machine, {"wake", "raw", "1", "1h30m"}, "Timer 1 is armed for 1 h 30 min from now.\n");
  Works(machine, {"wake", "raw", "0", "1048575", "--json"},
        "{\"timer\":0,\"durationMinutes\":1048575}\n");
  CHECK(client.calls == Calls{"SetWakeRaw 1 90", "SetWakeRaw 0 1048575"});
  Works(machine, {"wake", "raw", "1"}, "Timer 1: 1 h 30 min\n");
  Works(machine, {"wake", "raw", "1", "--json"}, "{\"timer\":1,\"durationMinutes\":90}\n");
  client.refused = {"SetWakeRaw", "GetWakeRaw"};
  Fails(machine, {"wake", "raw", "1", "90"}, 1,
        "the timer was not armed: the service has no driver device, or the driver did not take it");
  Fails(machine, {"wake", "raw", "1"}, 1,
        "the timer could not be read: the service has no driver device, or the driver does not "
        "answer");
}

TEST_CASE("a wake timer is shown in both forms") {
  const Machine machine;
  client.wakeTimes = {WakeTime{30, 6, 21, 11, 26}, WakeTime{26, 1, 0, 0, 0}};
  client.wakeCounts = {764318, 90};
  Works(machine, {"wake", "get"},
        "Timer 0 as a time: 2026-11-21 06:30; as a duration: 530 d 18 h 38 min\n"
        "Timer 1 as a time: no time of the calendar (year 0, month 0, day 0, hour 1, minute 26); "
        "as a duration: 1 h 30 min\n");
  Works(machine, {"wake", "get", "1", "--json"},
        "[{\"timer\":1,\"time\":null,\"year\":0,\"month\":0,\"day\":0,\"hour\":1,\"minute\":26,"
        "\"durationMinutes\":90}]\n");
  Works(machine, {"wake", "get", "0", "--json"},
        "[{\"timer\":0,\"time\":\"2026-11-21 06:30\",\"year\":26,\"month\":11,\"day\":21,"
        "\"hour\":6,\"minute\":30,\"durationMinutes\":764318}]\n");
  client.wakeTimes = {};
  client.wakeCounts = {};
  Works(machine, {"wake", "get", "0"}, "Timer 0 as a time: no time is set; as a duration: 0 min\n");
  for (const char* procedure : {"GetWakeTime", "GetWakeRaw"}) {
    client.refused = {procedure};
    Fails(machine, {"wake", "get"}, 1,
          "the timer could not be read: the service has no driver device, or the driver does not "
          "answer");
  }
}

TEST_CASE("what lies out of a field's range does not reach the service") {
  const Machine machine;
  const std::string timer = "TIMER: not 0 or 1: ";
  Fails(machine, {"wake", "set", "2", "2026-11-21 06:30"}, 2, timer + "2");
  Fails(machine, {"wake", "get", "-1"}, 2, timer + "-1");
  Fails(machine, {"wake", "raw", "x"}, 2, timer + "x");
  const std::string time = "TIME: not a local time from 2000-01-01 00:00 to 2127-12-31 23:59: ";
  Fails(machine, {"wake", "set", "0", "2128-01-01 00:00"}, 2, time + "2128-01-01 00:00");
  Fails(machine, {"wake", "set", "0", "1999-12-31 23:59"}, 2, time + "1999-12-31 23:59");
  Fails(machine, {"wake", "set", "0", "2026-02-30 00:00"}, 2, time + "2026-02-30 00:00");
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

TEST_CASE("the power scheme's settings are shown side by side") {
  const Machine machine;
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

TEST_CASE("a machine that lacks a setting has the others") {
  const Machine machine;
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
  const Machine machine;
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
  const Machine machine;
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

TEST_CASE("the strength is shown and chosen") {
  const Machine machine;
  Works(machine, {"strength", "set", "2147483647"}, "The strength is now 2147483647.\n");
  Works(machine, {"strength", "get"}, "The strength is 2147483647.\n");
  Works(machine, {"strength", "set", "0", "--json"}, "{\"strength\":0}\n");
  Works(machine, {"strength", "get", "--json"}, "{\"strength\":0}\n");
  CHECK(client.calls == Calls{"SetStrength 2147483647", "SetStrength 0"});
  client.refused = {"GetStrength", "SetStrength"};
  Fails(machine, {"strength", "get"}, 1, "the service could not read the strength");
  Fails(machine, {"strength", "set", "1"}, 1, "the service could not store the strength");
}

TEST_CASE("the history is reset only when the user says yes") {
  Machine machine;
  Run run = Ctl(machine, {"reset-history"});
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

TEST_CASE("events are printed as they are logged") {
  const Machine machine;
  client.events = {
      "<Level>4</Level><TimeCreated SystemTime='2026-11-21T08:05:09.1Z'/>"
      "<Data>Active</Data>",
      "<Level>2</Level><Data>broken</Data>"};
  Works(machine, {"watch"},
        "2026-11-21 08:05:09  information  Active\n"
        "at an unknown time   error        broken\n");
  Works(machine, {"watch", "--json"},
        "{\"time\":\"2026-11-21T08:05:09\",\"level\":\"information\",\"text\":\"Active\"}\n"
        "{\"time\":null,\"level\":\"error\",\"text\":\"broken\"}\n");
  client.events = {};
  client.eventsError = 120;
  Fails(machine, {"watch"}, 1, "the event log cannot be watched (error 120)");
}

TEST_CASE("what is learnt and set on this machine is explained") {
  Machine machine;
  machine.Provision();
  const std::string ignored =
      "warning: " + NarrowToUtf8(machine.DataFile()) + ": ignored: it cannot be opened";
  Run run = Ctl(machine, {"explain", "--at", "2026-11-21 18:00"});
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

TEST_CASE("an explanation of what is not done says so") {
  Machine machine;
  machine.Provision();
  settings.current.values = {{L"EnableZ7Feature", fakes::Number32(0)},
                             {L"DisablePrediction", fakes::Number32(1)}};
  const Run run = Ctl(machine, {"explain"});
  CHECK(run.exitCode == 0);
  REQUIRE(run.messages.size() == 3);
  CHECK(run.messages[1] == "warning: the feature is off, so nothing of this is done");
  CHECK(run.messages[2] == "warning: DisablePrediction is 1, so nothing of this is done");
}

TEST_CASE("nothing is explained without usable settings, a folder, or a time") {
  Machine machine;
  Fails(machine, {"explain"}, 1,
        "CyclicProbabilityPredictor::LoadDataIfExists - wrong configurations");
  machine.Provision();
  Fails(machine, {"explain", "--at", "noon"}, 2, "--at: not a local time YYYY-MM-DD HH:MM: noon");
  fakes::clock.utcSeconds = -1;
  Fails(machine, {"explain"}, 1, "the clock cannot be read; give --at");
  fakes::clock.utcSeconds = 0;
  settings.dataFolder = L"";
  Fails(machine, {"explain"}, 1, "invalid string position");
}

TEST_CASE("a report shows this machine's settings, files and timeout") {
  Machine machine;
  machine.Provision();
  fakes::clock.localTime = {9, 5, 8, 21, 10, 126, 6, 324, 0};
  fakes::power = {};
  fakes::power.acLineStatus = kLineOffline;
  fakes::power.values["balanced DC hibernate"] = 45 * 60;
  const std::string folder = NarrowToUtf8(settings.dataFolder);
  const std::string page = UserFolder() + "r.html";
  const std::vector<std::string> warnings = {
      "warning: " + folder + "cpredict.z7: ignored: it cannot be opened",
      "warning: " + folder + "zs7state.dat: ignored: it cannot be opened"};
  Run run = Ctl(machine, {"report", "--out", page});
  CHECK(run.exitCode == 0);
  CHECK(run.messages == warnings);
  std::string html = Content(page);
  CHECK(run.output == page + ": " + std::to_string(html.size()) + " bytes\n");
  CHECK(Contains(html, "Dozewell report of Sat 21 Nov 2026, 08:05. Nothing is recorded yet."));
  CHECK(CountOf("<p class=\"note\">", html) == 2);
  CHECK(Contains(html, "the score of a fixed timeout of 45 minutes"));

  const std::vector<HistoryRecord> history = Mornings(3);
  WriteWholeFile(settings.dataFolder + L"zs7state.dat", history.data(),
                 history.size() * sizeof(HistoryRecord));
  fakes::power.acLineStatus = kLineUnknown;
  run = Ctl(machine, {"report", "--json", "--out", page});
  html = Content(page);
  CHECK(run.output ==
        "{\"file\":\"" + page + "\",\"bytes\":" + std::to_string(html.size()) + "}\n");
  CHECK(run.messages == Calls{warnings[0]});
  CHECK(Contains(html, "The history has 6 records"));
  // There is none for AC.
  CHECK(Contains(html, "the score of a fixed timeout of 10 minutes"));
  CHECK(std::ranges::count(settings.calls, "GetDataFolder") == 0);
}

TEST_CASE("no report is written without usable settings, a clock, or a place for it") {
  Machine machine;
  const std::string page = UserFolder() + "r.html";
  Fails(machine, {"report", "--out", page}, 1,
        "CyclicProbabilityPredictor::LoadDataIfExists - wrong configurations");
  machine.Provision();
  const Run run = Ctl(machine, {"report", "--out", UserFolder()});
  CHECK(run.exitCode == 1);
  CHECK(run.messages.back() == UserFolder() + ": cannot be written: not a regular file");
  fakes::clock.utcSeconds = -1;
  Fails(machine, {"report", "--out", page}, 1, "the clock cannot be read");
  CHECK_FALSE(OpenFile(PathFromSystem(page), "rb"));
}

TEST_CASE("the status fits on a screen") {
  Machine machine;
  machine.Provision();
  fakes::utcOffsetSeconds = 3600;
  settings.current.values = {{L"LastOptimizerRun", fakes::Number64(1793491200)}};
  settings.current.predictorValues[{kPredictorSection, "Best1"}] = fakes::Text("20,20,60,50,30,12");
  client.power = {PowerTimeouts{10, 30, 180, 1, 1}, PowerTimeouts{5, 15, 0, 2, 0}};
  client.wakeTimes[0] = {30, 6, 22, 11, 26};
  client.wakeCounts[1] = 886;
  client.strength = 1;
  client.events = {"<Data>passed over</Data>", "<Level>4</Level><Data>Suspend</Data>",
                   "<Level>4</Level><Data>Suspended</Data>",
                   "<Level>2</Level><TimeCreated SystemTime='2026-11-21T08:05:09.1Z'/>"
                   "<Data>broken</Data>"};
  Works(machine, {"status"},
        "Service             running\n"
        "Feature             on\n"
        "Start attempts      3 of 3: the controller starts with the service\n"
        "Controller          should run: the feature is on and enough start attempts were made\n"
        "Predictions         on\n"
        "Power scheme        balanced\n"
        "                    ac                  dc\n"
        "  display-off       10 min              5 min\n"
        "  sleep-after       30 min              15 min\n"
        "  hibernate-after   3 h 00 min          never\n"
        "  wake-timers       on                  important\n"
        "  hybrid-sleep      on                  off\n"
        "Wake timers         enabled\n"
        "  0, the alarm      2026-11-22 06:30\n"
        "  1, the duration   14 h 46 min\n"
        "Strength            1\n"
        "Last optimizer run  2026-11-01 01:00:00\n"
        "Last events\n"
        "  at an unknown time   information  Suspend\n"
        "  at an unknown time   information  Suspended\n"
        "  2026-11-21 09:05:09  error        broken\n");
  Works(machine, {"status", "--json"},
        "{\"answers\":true,\"service\":\"running\",\"featureEnabled\":true,\"currentAttempt\":3,"
        "\"totalAttempts\":3,\"controller\":{\"runs\":\"yes\",\"why\":\"the feature is on and "
        "enough start attempts were made\"},\"predictionsEnabled\":true,\"scheme\":\"balanced\","
        "\"power\":{\"ac\":{\"displayOffMinutes\":10,\"sleepAfterMinutes\":30,"
        "\"hibernateAfterMinutes\":180,\"allowWakeTimers\":1,\"allowHybridSleep\":1},"
        "\"dc\":{\"displayOffMinutes\":5,\"sleepAfterMinutes\":15,\"hibernateAfterMinutes\":0,"
        "\"allowWakeTimers\":2,\"allowHybridSleep\":0}},\"driverEnabled\":true,"
        "\"alarm\":\"2026-11-22 06:30\",\"durationMinutes\":886,\"strength\":1,"
        "\"strengthHasResult\":true,\"lastOptimizerRun\":\"2026-11-01T01:00:00\",\"events\":["
        "{\"time\":null,\"level\":\"information\",\"text\":\"Suspend\"},"
        "{\"time\":null,\"level\":\"information\",\"text\":\"Suspended\"},"
        "{\"time\":\"2026-11-21T09:05:09\",\"level\":\"error\",\"text\":\"broken\"}]}\n");
}

TEST_CASE("the status shows what is not there") {
  Machine machine;
  client.service = {1060, 0};
  client.featureEnabled = false;
  client.refused = {"GetFeatureEnabled", "GetActiveScheme", "GetPowerSettings", "GetDriverEnabled",
                    "GetStrength"};
  client.eventsError = 120;
  settings.current.values = {{L"EnableZ7Feature", fakes::Number32(1)},
                             {L"CurrentAttempt", fakes::Number32(1)},
                             {L"DisablePrediction", fakes::Number32(1)}};
  Works(machine, {"status"},
        "Service             not installed, but one answers, as from a console\n"
        "Feature             on\n"
        "Start attempts      TotalAttempts is not set: the controller never starts by itself\n"
        "Controller          may run: only if it was started earlier, as it cannot be built now: "
        "CyclicProbabilityPredictor::LoadDataIfExists - wrong configurations\n"
        "Predictions         off, as DisablePrediction is 1\n"
        "Power scheme        not balanced, power-saver or high-performance, or not to be read\n"
        "                    ac                  dc\n"
        "  display-off       not available       not available\n"
        "  sleep-after       not available       not available\n"
        "  hibernate-after   not available       not available\n"
        "  wake-timers       not available       not available\n"
        "  hybrid-sleep      not available       not available\n"
        "Wake timers         none: the driver does not answer\n"
        "Strength            0, for which the optimizer has stored nothing yet\n"
        "Last optimizer run  never\n"
        "Last events         not to be read (error 120)\n");
}

TEST_CASE("the status of a service that does not answer is what the machine tells") {
  Machine machine;
  machine.Provision();
  client.unreachable = kServerUnavailable;
  client.service = {0, 1};
  settings.current.values = {{L"EnableZ7Feature", fakes::Number32(0)}};
  settings.current.predictorValues[{kPredictorSection, "Strength"}] = fakes::Text("2");
  const std::string message =
      "the service is stopped; as administrator, net start DozewellService starts it";
  Run run = Ctl(machine, {"status"});
  CHECK(run.exitCode == 3);
  CHECK(run.messages == Calls{message});
  CHECK(run.output ==
        "Service             stopped\n"
        "Feature             off\n"
        "Start attempts      3 of 3: the controller starts with the service\n"
        "Controller          does not run: the service does not answer\n"
        "Predictions         on\n"
        "Power scheme        not known, as the service does not answer\n"
        "Wake timers         not known, as the service does not answer\n"
        "Strength            2, for which the optimizer has stored nothing yet\n"
        "Last optimizer run  never\n"
        "Last events         none\n");
  run = Ctl(machine, {"status", "--json"});
  CHECK(run.exitCode == 3);
  CHECK(run.messages == Calls{message});
  CHECK(run.output.starts_with(
      "{\"answers\":false,\"service\":\"stopped\",\"featureEnabled\":false,"));
}

}  // namespace dozewell::ctl
