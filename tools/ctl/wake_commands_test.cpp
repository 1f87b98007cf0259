#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "ctl/fakes/client_fake.h"
#include "fakes/client_machine.h"
#include "fakes/clock_fake.h"
#include "support/calls.h"

namespace dozewell::ctl {
namespace {

using fakes::client;
using fakes::ClientMachine;
using fakes::Fails;
using fakes::Works;

}  // namespace

TEST_CASE("a wake timer is armed for a time") {
  const ClientMachine machine;
  Works(machine, {"wake", "set", "0", "2026-11-21 06:30"},
        "Timer 0 is armed for 2026-11-21 06:30.\n");
  Works(machine, {"wake", "set", "1", "2127-12-31T23:59", "--json"},
        "{\"timer\":1,\"time\":\"2127-12-31 23:59\",\"year\":127,\"month\":12,\"day\":31,"
        "\"hour\":23,\"minute\":59}\n");
  // The same in seconds, UTC.
  Works(machine, {"wake", "set", "0", "1795242600"}, "Timer 0 is armed for 2026-11-21 06:30.\n");
  CHECK(client.calls == Calls{"SetWakeTime 0 30 6 21 11 26", "SetWakeTime 1 59 23 31 12 127",
                              "SetWakeTime 0 30 6 21 11 26"});
  client.refused = {"SetWakeTime"};
  Fails(machine, {"wake", "set", "0", "2026-11-21 06:30"}, 1,
        "the timer was not armed: the service has no driver device, or the driver did not take it");
}

TEST_CASE("a wake timer is armed for whole minutes of its calendar only") {
  const ClientMachine machine;
  Fails(machine, {"wake", "set", "0", "2026-11-21 06:30:01"}, 2,
        "TIME: not in whole minutes: 2026-11-21 06:30:01");
  Fails(machine, {"wake", "set", "0", "2128-01-01 00:00"}, 2,
        "TIME: not a local time from 2000-01-01 00:00 to 2127-12-31 23:59: 2128-01-01 00:00");
  Fails(machine, {"wake", "set", "0", "06:30"}, 2,
        "TIME: not a local time \"YYYY-MM-DD HH:MM\" or UTC seconds since 1970: 06:30");
  CHECK(client.calls.empty());
}

TEST_CASE("a wake timer that is armed for a time that has passed is warned of") {
  const ClientMachine machine;
  fakes::clock.localTime = {30, 30, 6, 21, 10, 126, 6, 324, 0};
  Works(machine, {"wake", "set", "0", "2026-11-21 06:31"},
        "Timer 0 is armed for 2026-11-21 06:31.\n");
  const fakes::ClientRun run = fakes::Ctl(machine, {"wake", "set", "0", "2026-11-21 06:30"});
  CHECK(run.exitCode == 0);
  CHECK(run.output == "Timer 0 is armed for 2026-11-21 06:30.\n");
  CHECK(run.messages == Calls{"warning: 2026-11-21 06:30 has passed"});
  CHECK(client.calls.size() == 2);
}

TEST_CASE("a wake timer is armed for a duration") {
  const ClientMachine machine;
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
  const ClientMachine machine;
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

}  // namespace dozewell::ctl
