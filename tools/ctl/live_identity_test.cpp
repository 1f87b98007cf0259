#include "ctl/live_identity.h"

#include <doctest/doctest.h>

#include "base/file.h"
#include "ctl/fakes/check_fake.h"
#include "ctl/fakes/client_fake.h"
#include "fakes/client_machine.h"
#include "fakes/settings_fake.h"
#include "prediction/configurations_impl.h"

namespace dozewell::ctl {
namespace {

using fakes::ClientMachine;
using fakes::Ctl;
using fakes::settings;

std::string WithMark(const std::string& time) {
  ConfigurationsImpl configuration;
  return "{\"name\":\"OFFICE-7\",\"version\":\"" + std::string(kVersion) + "\",\"settings\":\"" +
         SettingsMark(configuration, false) +
         "\",\"zone\":\"W. Europe Standard Time\",\"time\":" + time + "}";
}

}  // namespace

TEST_CASE("each document of the client says which machine it is about") {
  const ClientMachine machine;
  ClientMachine::Provision();
  TrackerData header = {};
  header.lastTime = {8, 5, 9, 21, 10, 126, 6, 324, 0};
  WriteWholeFile(settings.dataFolder + L"cpredict.z7", &header, sizeof(header));
  fakes::client.events = {"<Event><EventData><Data>Active</Data></EventData></Event>"};
  const std::string identity = WithMark("\"2026-11-21T09:05:08\"");
  for (const std::vector<std::string>& command : {std::vector<std::string>{"status"},
                                                  {"check"},
                                                  {"ping"},
                                                  {"driver"},
                                                  {"wake", "get"},
                                                  {"wake", "raw", "1"},
                                                  {"power", "get"},
                                                  {"scheme", "get"},
                                                  {"strength", "get"},
                                                  {"watch"},
                                                  {"enable"},
                                                  {"reset-history", "--yes"}}) {
    std::vector<std::string> arguments = command;
    arguments.emplace_back("--json");
    CAPTURE(command.front());
    CHECK(Ctl(machine, arguments).identity == identity);
  }
}

TEST_CASE("what is not known of this machine is null in its identity") {
  const ClientMachine machine;
  ClientMachine::Provision();
  CHECK(Ctl(machine, {"ping", "--json"}).identity == WithMark("null"));
  WriteWholeFile(settings.dataFolder + L"cpredict.z7", "short", 5);
  CHECK(Ctl(machine, {"ping", "--json"}).identity == WithMark("null"));
  settings.dataFolder = L"";
  CHECK(Ctl(machine, {"ping", "--json"}).identity == WithMark("null"));
  fakes::checked.zone.reset();
  CHECK(LiveIdentity().zone == std::nullopt);
}

}  // namespace dozewell::ctl
