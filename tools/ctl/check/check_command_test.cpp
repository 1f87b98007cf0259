#include <doctest/doctest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "ctl/check/check_report.h"
#include "ctl/fakes/check_fake.h"
#include "ctl/fakes/client_fake.h"
#include "ctl/service_query.h"
#include "fakes/client_machine.h"
#include "fakes/clock_fake.h"
#include "fakes/power_fake.h"
#include "fakes/settings_fake.h"
#include "prediction/configurations.h"
#include "support/calls.h"
#include "support/text_parts.h"

namespace dozewell::ctl {
namespace {

using fakes::checked;
using fakes::client;
using fakes::ClientMachine;
using fakes::ClientRun;
using fakes::Ctl;
using fakes::kServerUnavailable;
using fakes::power;
using fakes::SafePath;
using fakes::settings;

constexpr uint32_t kProcess = 4711;
constexpr const char* kFolder = "C:\\ProgramData\\Brevan";
constexpr const char* kInnerFolder = "C:\\ProgramData\\Brevan\\Z7";
constexpr const char* kProgram = "C:\\Program Files\\Dozewell\\DozewellService.exe";
constexpr uint32_t kWriting = 0x2;

std::string SystemEvent(const std::string& provider, int id, const std::string& time) {
  return "<Event><System><Provider Name='Microsoft-Windows-" + provider + "'/><EventID>" +
         std::to_string(id) + "</EventID><TimeCreated SystemTime='" + time +
         "Z'/></System></Event>";
}

std::string EventOfService(const std::string& text, const std::string& time) {
  return "<Level>4</Level><TimeCreated SystemTime='" + time + "Z'/><Data>" + text + "</Data>";
}

// A machine on which nothing is wrong, after its first night.
void ProvisionGoodMachine() {
  ClientMachine::Provision();
  settings.dataFolder = L"C:\\ProgramData\\Brevan\\Z7\\";
  settings.current.predictorValues[{kPredictorSection, "Best0"}] = fakes::Text("20,20,60,50,30,12");
  for (const char* path : {kFolder, kInnerFolder}) checked.paths[path] = SafePath(path);
  client.service = {0, 4, kProcess};
  client.pipeServer = kProcess;
  fakes::clock.utcSeconds = 1795334400;  // 2026-11-22 08:00
  client.systemLog = {SystemEvent("Kernel-Power", 42, "2026-11-21T18:00:03"),
                      SystemEvent("Kernel-Power", 107, "2026-11-22T07:00:00")};
  client.events = {EventOfService("21/11/2026 8:0:0 - Activating", "2026-11-21T08:00:00"),
                   EventOfService("21/11/2026 18:0:0 - Suspend", "2026-11-21T18:00:00"),
                   EventOfService("22/11/2026 7:0:0 - Activating", "2026-11-22T07:00:02")};
  for (const char* source : {"balanced AC ", "balanced DC "}) {
    fakes::power.values[source + std::string("sleep")] = 1800;
    fakes::power.values[source + std::string("hibernate")] = 10800;
    fakes::power.values[source + std::string("wake timers")] = 1;
  }
}

// What makes a good machine another one, and the one line in which a check shows it.
struct Oddity {
  const char* line;
  Verdict verdict;
  const char* text;  // a part of it
  std::function<void()> make;
};

std::vector<CheckLine> LinesThatAreNotOk() {
  std::vector<CheckLine> lines = Judge(GatherFacts());
  std::erase_if(lines, [](const CheckLine& line) { return line.finding.verdict == Verdict::Ok; });
  return lines;
}

void CheckOddity(const Oddity& oddity) {
  const ClientMachine machine;
  ProvisionGoodMachine();
  oddity.make();
  const std::vector<CheckLine> lines = LinesThatAreNotOk();
  CAPTURE(oddity.line);
  CAPTURE(oddity.text);
  REQUIRE(lines.size() == 1);
  const auto& [verdict, text, advice] = lines[0].finding;
  CHECK(lines[0].name == std::string(oddity.line));
  CHECK(verdict == oddity.verdict);
  CHECK(Contains(text, oddity.text));
  CHECK((verdict != Verdict::Bad || !advice.empty()));
}

void SetCapability(size_t which, uint8_t has) { power.capabilities->bytes[which] = has; }

constexpr const char* kHibernateAfterPolicy = "DC 9D7815A6-7EE4-497E-8888-515A05F02364";
constexpr const char* kWakeTimersPolicy = "AC BD3B718A-0680-4D9D-8AB2-E1D2B4AC806D";

}  // namespace

TEST_CASE("a machine on which nothing is wrong has no line that is not ok") {
  const ClientMachine machine;
  ProvisionGoodMachine();
  for (const CheckLine& line : LinesThatAreNotOk()) {
    CAPTURE(line.name);
    CHECK(line.finding.text.empty());
  }
  const ClientRun run = Ctl(machine, {"check"});
  CHECK(run.exitCode == 0);
  CHECK(run.messages == Calls{});
  CHECK(
      run.output.starts_with("ok    Windows           10.0 build 19045\n"
                             "ok    Rights            an administrator's\n"
                             "ok    Sleep (S3)        available\n"));
  CHECK(run.output.ends_with("29 ok, 0 notes, 0 BAD\n"));
}

TEST_CASE("what keeps the service from its work is BAD, in a line of its own and with advice") {
  const Oddity kOddities[] = {
      {"modern-standby", Verdict::Bad, "in the place of sleep",
       [] { SetCapability(PowerCapabilities::kModernStandby, 1); }},
      {"sleep", Verdict::Bad, "the machine can only hibernate",
       [] { SetCapability(PowerCapabilities::kS3, 0); }},
      {"hibernation", Verdict::Bad, "nothing to decide",
       [] { SetCapability(PowerCapabilities::kS4, 0); }},
      {"hibernation-file", Verdict::Bad, "never hibernates",
       [] { SetCapability(PowerCapabilities::kHibernationFile, 0); }},
      {"wake-timers", Verdict::Bad, "forbidden by policy: off on mains, allowed on battery",
       [] {
         checked.policies->insert(kWakeTimersPolicy);
         checked.numbers["BD3B718A-0680-4D9D-8AB2-E1D2B4AC806D ACSettingIndex"] = 0;
       }},
      {"policy", Verdict::Bad, "no effect: 3 h 00 min on mains, 30 min on battery",
       [] {
         checked.policies->insert(kHibernateAfterPolicy);
         checked.numbers["9D7815A6-7EE4-497E-8888-515A05F02364 DCSettingIndex"] = 1800;
       }},
      {"account", Verdict::Bad, "lacks rights",
       [] { checked.configuration.account = "NT AUTHORITY\\LocalService"; }},
      {"start", Verdict::Bad, "only when somebody starts it",
       [] { checked.configuration.startType = kStartsOnDemand; }},
      {"start", Verdict::Bad, "disabled", [] { checked.configuration.startType = kNeverStarts; }},
      {"start", Verdict::Bad, "of type 1", [] { checked.configuration.startType = 1; }},
      {"program", Verdict::Bad, "without quotation marks",
       [] { checked.configuration.command = kProgram; }},
      {"program", Verdict::Bad, "is not there", [] { checked.paths.erase(kProgram); }},
      {"program", Verdict::Bad, "can be replaced by Users",
       [] {
         checked.paths[kProgram].access.allowed.push_back({"S-1-5-32-545", kWriting});
       }},
      {"privilege", Verdict::Bad, "its configuration gives up SeShutdownPrivilege",
       [] { checked.configuration.privileges = {"SeChangeNotifyPrivilege"}; }},
      {"privilege", Verdict::Bad, "its token lacks SeShutdownPrivilege",
       [] { checked.token.maySleep = false; }},
      {"rpc", Verdict::Bad, "process 815 answers in the service's place",
       [] { client.pipeServer = 815; }},
      {"gate", Verdict::Bad, "never starts by itself",
       [] { settings.defaults.values.erase(L"TotalAttempts"); }},
      {"weights", Verdict::Bad, "FirstLastWeight is missing",
       [] {
         settings.defaults.predictorValues.erase({kPredictorSection, "FirstLastWeight"});
       }},
      {"cached-timeouts", Verdict::Bad, "HA_AC holds 45 min, HA_DC holds never",
       [] {
         settings.current.values[L"HA_AC"] = fakes::Number32(45);
         settings.current.values[L"HA_DC"] = fakes::Number32(0);
       }},
      {"data-folder", Verdict::Bad, "C:\\ProgramData\\Brevan\\Z7 belongs to S-1-5-21-1",
       [] { checked.paths[kInnerFolder].access.owner = "S-1-5-21-1"; }},
      {"data-folder", Verdict::Bad, "C:\\ProgramData\\Brevan can be changed by Users",
       [] {
         checked.paths[kFolder].access.allowed.push_back({"S-1-5-32-545", kWriting});
       }},
      {"data-folder", Verdict::Bad, "can be changed by Everyone",
       [] { checked.paths[kFolder].access.opensToAll = true; }},
      {"data-folder", Verdict::Bad, "is a link", [] { checked.paths[kInnerFolder].isLink = true; }},
      {"event-source", Verdict::Bad, "has no text for the events (error 317)",
       [] { checked.eventTextError = 317; }},
      {"scheme", Verdict::Bad, "3 h 00 min on mains, not known on battery",
       [] { fakes::power.values.erase("balanced DC hibernate"); }},
      {"zone", Verdict::Bad, "Windows knows of none", [] { checked.zone = std::nullopt; }},
      {"nights", Verdict::Bad,
       "3 of 4 sleeps, shut-downs and resumes seen; never heard of: resume at 2026-11-22 07:30:00",
       [] {
         client.systemLog.push_back(SystemEvent("Kernel-Power", 42, "2026-11-22T07:10:00"));
         client.systemLog.push_back(SystemEvent("Kernel-Power", 107, "2026-11-22T07:30:00"));
         client.events.push_back(
             EventOfService("22/11/2026 7:10:0 - Suspend", "2026-11-22T07:10:00"));
       }},
      {"returns", Verdict::Bad, "0 of 1 times after the service's own wakes; it stayed awake at",
       [] { client.events.push_back(EventOfService("Spike_S4ToS3", "2026-11-22T07:00:02")); }},
  };
  for (const Oddity& oddity : kOddities) CheckOddity(oddity);
}

TEST_CASE("what is worth knowing, or not known, is a note in a line of its own") {
  const Oddity kOddities[] = {
      {"windows", Verdict::Note, "6.1 build 7601, which is older",
       [] {
         checked.version = SystemVersion{6, 1, 7601};
       }},
      {"windows", Verdict::Note, "not known", [] { checked.version = std::nullopt; }},
      {"rights", Verdict::Note, "not an administrator's", [] { checked.isAdministrator = false; }},
      {"fast-startup", Verdict::Note, "a shut-down hibernates the service",
       [] { checked.numbers["Power HiberbootEnabled"] = 1; }},
      {"fast-startup", Verdict::Note, "not known", [] { checked.numbers.clear(); }},
      {"wake-timers", Verdict::Note, "allowed on mains, off on battery",
       [] { fakes::power.values["balanced DC wake timers"] = 0; }},
      {"scheme", Verdict::Note, "falls asleep after never on mains, 30 min on battery",
       [] { fakes::power.values["balanced AC sleep"] = 0; }},
      {"policy", Verdict::Note, "a policy sets the active power scheme",
       [] { checked.policies->insert("scheme"); }},
      {"policy", Verdict::Note, "not known", [] { checked.policies = std::nullopt; }},
      {"driver", Verdict::Note, "nothing wakes it ahead of its use",
       [] { client.refused = {"GetDriverEnabled"}; }},
      {"zone", Verdict::Note, "UTC+01:00, without its daylight saving time",
       [] { checked.zone->ignoresDaylightSaving = true; }},
      {"zone-variable", Verdict::Note, "TZ is EST5EDT for the whole machine",
       [] { checked.texts["Environment TZ"] = "EST5EDT"; }},
      {"start", Verdict::Note, "by itself, not delayed",
       [] { checked.configuration.startsDelayed = false; }},
      {"restarts", Verdict::Note, "after a crash it stays off",
       [] { checked.configuration.restarts = std::vector<int64_t>{}; }},
      {"restarts", Verdict::Note, "not known",
       [] { checked.configuration.restarts = std::nullopt; }},
      {"privilege", Verdict::Note, "its token: not known, needs an administrator",
       [] { checked.token.error = kErrorAccessDenied; }},
      {"pipe", Verdict::Note, "open to Everyone, anonymous users, from other machines too",
       [] {
         checked.pipe.allowed.push_back({"S-1-1-0", 0x1});
         checked.pipe.allowed.push_back({"S-1-5-7", 0x1});
       }},
      {"pipe", Verdict::Note, "not known (error 5)",
       [] { checked.pipe.error = kErrorAccessDenied; }},
      {"settings", Verdict::Note, "predictions are off",
       [] { settings.current.values[L"DisablePrediction"] = fakes::Number32(1); }},
      {"gate", Verdict::Note, "2 of 3",
       [] { settings.current.values[L"CurrentAttempt"] = fakes::Number32(2); }},
      {"data-folder", Verdict::Note, "whoever makes it first owns it",
       [] { checked.paths.erase(kFolder); }},
      {"event-source", Verdict::Note, "not registered", [] { checked.texts.clear(); }},
      {"returns", Verdict::Note, "0 of 1 times after wakes by other timers",
       [] {
         client.systemLog[1] =
             "<Event><System><Provider Name='Microsoft-Windows-Power-Troubleshooter'/>"
             "<EventID>1</EventID><TimeCreated SystemTime='2026-11-22T07:00:09Z'/></System>"
             "<EventData><Data Name='WakeTime'>2026-11-22T07:00:00Z</Data>"
             "<Data Name='WakeTimerOwner'>updates</Data></EventData></Event>";
       }},
  };
  for (const Oddity& oddity : kOddities) CheckOddity(oddity);
}

TEST_CASE("what belongs to the service's own account, or is for children only, is in good hands") {
  const ClientMachine machine;
  ProvisionGoodMachine();
  checked.token.account = "S-1-5-21-7";
  checked.paths[kFolder].access.owner = "S-1-5-21-7";
  checked.paths[kInnerFolder].access.owner = "S-1-5-32-544";
  checked.paths[kInnerFolder].access.allowed.push_back({"S-1-5-32-545", kWriting, true});
  CHECK(LinesThatAreNotOk().empty());
}

TEST_CASE("nights of which a log does not tell are not known") {
  const ClientMachine machine;
  ProvisionGoodMachine();
  client.eventsError = 120;
  std::vector<CheckLine> lines = LinesThatAreNotOk();
  REQUIRE(lines.size() == 2);
  CHECK(lines[0].finding.verdict == Verdict::Note);
  CHECK(lines[0].finding.text == "the System log cannot be read (error 120)");
  client.eventsError = 0;
  client.events.clear();
  lines = LinesThatAreNotOk();
  REQUIRE(lines.size() == 1);
  CHECK(lines[0].finding.verdict == Verdict::Note);
  CHECK(lines[0].finding.text ==
        "the service has logged nothing in 7 days, though it should have at its start");
}

TEST_CASE("a check with a BAD line fails with 1, and one without an answer with 3") {
  const ClientMachine machine;
  ProvisionGoodMachine();
  SetCapability(PowerCapabilities::kHibernationFile, 0);
  ClientRun run = Ctl(machine, {"check"});
  CHECK(run.exitCode == 1);
  CHECK(run.messages == Calls{"1 of 29 lines are BAD"});
  CHECK(Contains(run.output,
                 "\nBAD   Hibernation file  none, so the machine never hibernates\n"
                 "                        -> as administrator, powercfg /hibernate /type "
                 "full\n"));
  CHECK(run.output.ends_with("28 ok, 0 notes, 1 BAD\n"));

  client.unreachable = kServerUnavailable;
  client.service = {kErrorServiceMissing, 0};
  checked.configuration.error = kErrorServiceMissing;
  run = Ctl(machine, {"check"});
  CHECK(run.exitCode == 3);
  CHECK(run.messages.size() == 1);
  CHECK(Contains(run.output, "\nBAD   Service           not installed\n"));
  CHECK(Contains(run.output, "\nBAD   RPC               does not answer\n"));
  CHECK(Contains(run.output,
                 "\nnote  Driver            not known, as the service does not answer\n"));
}

TEST_CASE("a check is one document for programs") {
  const ClientMachine machine;
  ProvisionGoodMachine();
  checked.texts["Environment TZ"] = "\xC3\x84";
  const ClientRun run = Ctl(machine, {"check", "--json"});
  CHECK(run.exitCode == 0);
  CHECK(
      run.output.starts_with("{\"ok\":28,\"notes\":1,\"bad\":0,\"lines\":[{\"name\":\"windows\","
                             "\"verdict\":\"ok\",\"text\":\"10.0 build 19045\","
                             "\"advice\":null},"));
  CHECK(Contains(run.output,
                 "{\"name\":\"zone-variable\",\"verdict\":\"note\",\"text\":\"TZ is \\u00c4 "
                 "for the whole machine; "));
  CHECK(run.output.ends_with("],\"try\":null}\n"));
}

TEST_CASE("a check changes nothing") {
  const ClientMachine machine;
  ProvisionGoodMachine();
  fakes::power.calls.clear();
  Ctl(machine, {"check"});
  CHECK(client.calls == Calls{});
  for (const std::string& call : fakes::power.calls) {
    CAPTURE(call);
    CHECK((call == "get active" || call.starts_with("read ")));
  }
  for (const std::string& call : settings.calls) {
    CAPTURE(call);
    CHECK((call.starts_with("Read") || call == "DataFolderPath"));
  }
}

TEST_CASE("a check that tries to write says how long that took") {
  const ClientMachine machine;
  ProvisionGoodMachine();
  ClientRun run = Ctl(machine, {"check", "--try"});
  CHECK(run.exitCode == 0);
  CHECK(Contains(run.output,
                 "\nWriting each hibernate-after timeout as it is\n"
                 "  read which scheme is active  "));
  CHECK(Contains(run.output, " ms of the 2000 ms that a suspend has\n"));
  settings.current.values[L"HA_DC"] = fakes::Number32(60);
  fakes::power.calls.clear();
  run = Ctl(machine, {"check", "--try", "--json"});
  CHECK(run.exitCode == 1);
  CHECK(Contains(run.output,
                 "\"try\":{\"done\":false,\"refusal\":\"HA_DC is cached: a predicted timeout "
                 "is in force\",\"steps\":[{\"name\":\"read which scheme is active\","
                 "\"done\":true,\"milliseconds\":"));
  CHECK(std::ranges::none_of(fakes::power.calls, [](const std::string& call) {
    return call.starts_with("write") || call.starts_with("activate");
  }));
}

}  // namespace dozewell::ctl
