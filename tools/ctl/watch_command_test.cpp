#include <doctest/doctest.h>

#include "ctl/fakes/client_fake.h"
#include "fakes/client_machine.h"

namespace dozewell::ctl {
namespace {

using fakes::client;
using fakes::ClientMachine;
using fakes::Fails;
using fakes::Works;

}  // namespace

TEST_CASE("events are printed as they are logged") {
  const ClientMachine machine;
  client.events = {
      "<Level>4</Level><TimeCreated SystemTime='2026-11-21T08:05:09.1Z'/>"
      "<Data>Active</Data>",
      "<Level>2</Level><Data>broken</Data>"};
  Works(machine, {"watch"},
        "2026-11-21 08:05:09  information  Active\n"
        "at an unknown time   error        broken\n");
  Works(machine, {"watch", "--json"},
        "{\"time\":\"2026-11-21T08:05:09\",\"level\":\"information\",\"text\":\"Active\","
        "\"utcSeconds\":1795248309}\n"
        "{\"time\":null,\"level\":\"error\",\"text\":\"broken\",\"utcSeconds\":null}\n");
  client.events = {};
  client.eventsError = 120;
  Fails(machine, {"watch"}, 1, "the event log cannot be watched (error 120)");
}

}  // namespace dozewell::ctl
