#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "ctl/fakes/check_fake.h"
#include "ctl/fakes/client_fake.h"
#include "ctl/fakes/utc_time_fake.h"
#include "fakes/client_machine.h"
#include "fakes/power_fake.h"
#include "fakes/settings_fake.h"
#include "prediction/configurations.h"
#include "support/calls.h"

namespace dozewell::ctl {
namespace {

using fakes::checked;
using fakes::client;
using fakes::ClientMachine;
using fakes::ClientRun;
using fakes::Ctl;
using fakes::kServerUnavailable;
using fakes::power;
using fakes::settings;
using fakes::Works;

}  // namespace

TEST_CASE("the status fits on a screen") {
  const ClientMachine machine;
  ClientMachine::Provision();
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
        "Machine             sleeps and hibernates\n"
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
        "{\"time\":null,\"level\":\"information\",\"text\":\"Suspend\",\"utcSeconds\":null},"
        "{\"time\":null,\"level\":\"information\",\"text\":\"Suspended\",\"utcSeconds\":null},"
        "{\"time\":\"2026-11-21T09:05:09\",\"level\":\"error\",\"text\":\"broken\","
        "\"utcSeconds\":1795248309}],\"serviceState\":4,\"serviceError\":0,\"alarmFields\":{"
        "\"year\":26,\"month\":11,\"day\":22,\"hour\":6,\"minute\":30},"
        "\"lastOptimizerRunUtcSeconds\":1793491200,\"eventsError\":0,\"machine\":{"
        "\"sleeps\":true,\"hibernates\":true,\"hibernationFile\":true,\"modernStandby\":false,"
        "\"fastStartup\":false,\"wakeTimersForbidden\":false,"
        "\"hibernateAfterUnderPolicy\":false,\"driver\":true,"
        "\"wakeTimer\":\"driver\",\"wakeTimerLimits\":[]}}\n");
}

TEST_CASE("the status shows what is not there") {
  const ClientMachine machine;
  client.service = {1060, 0};
  client.featureEnabled = false;
  client.refused = {"GetFeatureEnabled", "GetActiveScheme", "GetPowerSettings", "GetDriverEnabled",
                    "GetStrength"};
  client.eventsError = 120;
  power.capabilities->bytes[PowerCapabilities::kModernStandby] = 1;
  power.capabilities->bytes[PowerCapabilities::kHibernationFile] = 0;
  checked.numbers["Power HiberbootEnabled"] = 1;
  settings.current.values = {{L"EnableZ7Feature", fakes::Number32(1)},
                             {L"CurrentAttempt", fakes::Number32(1)},
                             {L"DisablePrediction", fakes::Number32(1)}};
  Works(machine, {"status"},
        "Service             not installed, but one answers; it may run in a console\n"
        "Feature             on\n"
        "Start attempts      TotalAttempts is not set: the controller never starts by itself\n"
        "Controller          may run: only if it was started earlier, as it cannot be built now: "
        "SOFTWARE\\Corisk\\Z7: TimeResolution, DaysInCycle, MinutesInDay, FirstLastWeight, "
        "SecondLastWeight, AgregationWeight are missing: "
        "CyclicProbabilityPredictor::LoadDataIfExists - wrong configurations\n"
        "Predictions         off, as DisablePrediction is 1\n"
        "Machine             Modern Standby, no hibernation file, Fast Startup, no driver\n"
        "Power scheme        not balanced, power-saver or high-performance, or could not be read\n"
        "                    ac                  dc\n"
        "  display-off       not available       not available\n"
        "  sleep-after       not available       not available\n"
        "  hibernate-after   not available       not available\n"
        "  wake-timers       not available       not available\n"
        "  hybrid-sleep      not available       not available\n"
        "Wake timers         none: the driver does not answer\n"
        "Strength            0, for which the optimizer has stored nothing yet\n"
        "Last optimizer run  never\n"
        "Last events         could not be read (error 120)\n");
}

TEST_CASE("the status of a service that does not answer comes from the machine") {
  const ClientMachine machine;
  ClientMachine::Provision();
  client.unreachable = kServerUnavailable;
  client.service = {0, 1};
  power.capabilities = std::nullopt;
  settings.current.values = {{L"EnableZ7Feature", fakes::Number32(0)}};
  settings.current.predictorValues[{kPredictorSection, "Strength"}] = fakes::Text("2");
  const std::string message =
      "the service is stopped; as administrator, net start DozewellService starts it";
  ClientRun run = Ctl(machine, {"status"});
  CHECK(run.exitCode == 3);
  CHECK(run.messages == Calls{message});
  CHECK(run.output ==
        "Service             stopped\n"
        "Feature             not known, as the service does not answer\n"
        "Start attempts      3 of 3: the controller starts with the service\n"
        "Controller          does not run: the service does not answer\n"
        "Predictions         on\n"
        "Machine             what it can do is not known\n"
        "Power scheme        not known, as the service does not answer\n"
        "Wake timers         not known, as the service does not answer\n"
        "Strength            2, for which the optimizer has stored nothing yet\n"
        "Last optimizer run  never\n"
        "Last events         none\n");
  run = Ctl(machine, {"status", "--json"});
  CHECK(run.exitCode == 3);
  CHECK(run.messages == Calls{message});
  CHECK(run.output.starts_with(
      "{\"answers\":false,\"service\":\"stopped\",\"featureEnabled\":null,"));
}

}  // namespace dozewell::ctl
