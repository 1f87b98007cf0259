#include <doctest/doctest.h>

#include <string>
#include <utility>
#include <vector>

#include "base/file.h"
#include "ctl/fakes/client_fake.h"
#include "ctl/fakes/utc_time_fake.h"
#include "fakes/client_machine.h"
#include "fakes/settings_fake.h"
#include "prediction/history_file.h"
#include "support/file_name.h"
#include "support/temp_folder.h"

namespace dozewell::ctl {
namespace {

using fakes::client;
using fakes::ClientRun;
using fakes::Ctl;
using fakes::kServerUnavailable;
using fakes::settings;
using Lines = std::vector<std::string>;

constexpr const char* kStopIt = "; as administrator, net stop DozewellService stops it";

std::string Event(const std::string& provider, int id, const std::string& time) {
  return "<Event><System><Provider Name='" + provider + "'/><EventID>" + std::to_string(id) +
         "</EventID><TimeCreated SystemTime='" + time + "Z'/></System></Event>";
}

std::vector<std::string> Day() {
  return {Event("Microsoft-Windows-Kernel-General", 12, "1970-01-03T07:00:00"),
          Event("Microsoft-Windows-Kernel-Power", 42, "1970-01-03T16:00:00"),
          Event("Somebody", 1, "1970-01-03T16:00:01")};
}

// A machine whose service is stopped and has learnt nothing, an hour ahead of UTC.
class Machine : public fakes::ClientMachine {
 public:
  Machine() {
    client.unreachable = kServerUnavailable;
    client.service = {0, 1};
    client.systemLog = Day();
    Provision();
    fakes::utcOffsetSeconds = 3600;
  }

  std::string HistoryName() const { return PathToSystem(Folder().File(L"zs7state.dat")); }
  std::string DataName() const { return PathToSystem(Folder().File(L"cpredict.z7")); }

  void PutHistory(const std::vector<HistoryRecord>& records) const {
    REQUIRE(WriteWholeFile(Folder().File(L"zs7state.dat"), records.data(),
                           records.size() * sizeof(HistoryRecord)));
  }
  std::vector<double> HistoryTimes() const {
    std::vector<double> times;
    const auto bytes = ReadWholeFile(Folder().File(L"zs7state.dat"));
    if (!bytes) return times;
    for (const HistoryRecord& record : WholeRecords(*bytes)) times.push_back(record.time);
    return times;
  }
  bool HasData() const { return ReadWholeFile(Folder().File(L"cpredict.z7")).has_value(); }
};

Lines Arguments(Lines options) {
  options.insert(options.begin(), "import-history");
  return options;
}

ClientRun Import(const Machine& machine, const Lines& options = {}) {
  return Ctl(machine, Arguments(options));
}

void Fails(const Machine& machine, const Lines& options, const std::string& message) {
  fakes::Fails(machine, Arguments(options), 1, message);
}

using Times = std::vector<double>;

constexpr double kMorning = 2 * 86400 + 28800;  // 1970-01-03 08:00
constexpr double kEvening = 2 * 86400 + 61200;  // 17:00

}  // namespace

TEST_CASE("a history is made from the event log and learnt") {
  Machine machine;
  machine.answer = true;
  const ClientRun run = Import(machine);
  CHECK(run.exitCode == 0);
  CHECK(run.messages == Lines{});
  CHECK(run.questions ==
        Lines{machine.HistoryName() + " gets 2 records, 1970-01-03 08:00 to 1970-01-03 17:00. " +
              machine.DataName() + " is made from it. Go on?"});
  CHECK(run.output == machine.HistoryName() +
                          ": 2 records; from the event log: 2 records, 1970-01-03 08:00 to "
                          "1970-01-03 17:00\n" +
                          machine.DataName() + ": learnt\n");
  CHECK(machine.HistoryTimes() == Times{kMorning, kEvening});
  CHECK(ReadWholeFile(machine.Folder().File(L"cpredict.z7")).value().size() == 48 * 24 + 64);
}

TEST_CASE("nothing is imported unless the user says yes") {
  const Machine machine;
  ClientRun run = Import(machine);
  CHECK(run.exitCode == 1);
  CHECK(run.questions.size() == 1);
  CHECK(run.messages == Lines{"nothing was imported"});
  CHECK(machine.Folder().IsEmpty());
  run = Import(machine, {"--yes"});
  CHECK(run.exitCode == 0);
  CHECK(run.questions == Lines{});
  CHECK(machine.HistoryTimes() == Times{kMorning, kEvening});
}

TEST_CASE("what is imported comes before the history, and what is learnt stays") {
  Machine machine;
  machine.answer = true;
  machine.PutHistory({{kEvening - 60, 0, 0}, {kEvening + 60, 1, 0}});
  REQUIRE(WriteWholeFile(machine.Folder().File(L"cpredict.z7"), "learnt", 6));
  const ClientRun run = Import(machine);
  CHECK(run.exitCode == 0);
  CHECK(run.questions ==
        Lines{machine.HistoryName() + " gets 1 record, 1970-01-03 08:00 to 1970-01-03 08:00, "
                                      "before the 1 that it keeps. Go on?"});
  CHECK(run.output == machine.HistoryName() +
                          ": 2 records; from the event log: 1 record, 1970-01-03 08:00 to "
                          "1970-01-03 08:00\n" +
                          machine.DataName() + ": left as it is\n");
  CHECK(machine.HistoryTimes() == Times{kMorning, kEvening + 60});
  CHECK(ReadWholeFile(machine.Folder().File(L"cpredict.z7")).value().size() == 6);
}

TEST_CASE("importing again changes nothing and asks nothing") {
  const Machine machine;
  Import(machine, {"--yes"});
  const ClientRun run = Import(machine);
  CHECK(run.exitCode == 0);
  CHECK(run.questions == Lines{});
  CHECK(run.output == machine.HistoryName() + ": 2 records; from the event log: no records\n" +
                          machine.DataName() + ": left as it is\n");
  CHECK(Import(machine, {"--json"}).output ==
        "{\"records\":2,\"added\":0,\"from\":null,\"to\":null,\"events\":3,\"wakesLeftOut\":0,"
        "\"unexpectedEnds\":0,\"eventsCorrected\":0,\"eventsLeftOut\":0,\"learnt\":false}\n");
}

TEST_CASE("a missing data file is learnt from a history that stays as it is") {
  Machine machine;
  machine.answer = true;
  machine.PutHistory({{100, 0, 0}, {200, 1, 0}, {150, 0, 0}});
  const ClientRun run = Import(machine);
  CHECK(run.exitCode == 0);
  CHECK(run.questions == Lines{machine.DataName() + " is made from it. Go on?"});
  CHECK(machine.HistoryTimes() == Times{100, 200, 150});
  CHECK(machine.HasData());
}

TEST_CASE("an export of the event log is imported") {
  const Machine machine;
  client.systemLog = {};
  std::string xml;
  for (const std::string& event : Day()) xml += event + "\n";
  REQUIRE(WriteWholeFile(machine.Folder().File(L"log.xml"), xml.data(), xml.size()));
  const ClientRun run =
      Import(machine, {"--from", FileName(machine.Folder(), L"log.xml"), "--yes", "--json"});
  CHECK(run.exitCode == 0);
  CHECK(run.output.starts_with("{\"records\":2,\"added\":2,\"from\":\"1970-01-03T08:00:00\","));
  CHECK(run.output.ends_with(",\"learnt\":true}\n"));
}

TEST_CASE("what waits beside the history counts, and goes when it was imported") {
  const Machine machine;
  machine.PutHistory({{kEvening, 0, 0}});
  const HistoryRecord newer[] = {{kEvening - 60, 0, 0}, {kEvening + 60, 1, 0}};
  REQUIRE(WriteWholeFile(machine.Folder().File(L"zs7state.dat.new"), newer, sizeof(newer)));
  REQUIRE(WriteWholeFile(machine.Folder().File(L"cpredict.z7.new"), "learnt", 6));
  const ClientRun run = Import(machine, {"--yes"});
  CHECK(run.exitCode == 0);
  CHECK(run.output.ends_with(machine.DataName() + ": left as it is\n"));
  CHECK(machine.HistoryTimes() == Times{kMorning, kEvening + 60});
  CHECK_FALSE(OpenFile(machine.Folder().File(L"zs7state.dat.new"), "rb"));
  CHECK_FALSE(machine.HasData());
}

TEST_CASE("a damaged history is extended with a warning, and another file is not") {
  const Machine machine;
  machine.PutHistory({{kEvening, 1, 0}, {kEvening - 1, 0, 0}});
  const ClientRun run = Import(machine, {"--yes"});
  CHECK(run.exitCode == 0);
  CHECK(run.messages == Lines{"warning: " + machine.HistoryName() +
                              ": damaged: 1 record not later than one before"});
  REQUIRE(WriteWholeFile(machine.Folder().File(L"zs7state.dat"), "1,0", 3));
  Fails(machine, {"--yes"},
        machine.HistoryName() +
            ": no history (zs7state.dat): it looks like text; the name of a "
            "CSV history ends in .csv");
}

TEST_CASE("the service's files are no export of an event log") {
  const Machine machine;
  for (const auto& [option, name] :
       {std::pair{FileName(machine.Folder(), L"zs7state.dat"), machine.HistoryName()},
        {FileName(machine.Folder(), L"cpredict.z7"), machine.DataName()}}) {
    Fails(machine, {"--yes", "--from", option}, name + ": cannot be written: it is also --from");
  }
}

TEST_CASE("nothing is imported while the service runs") {
  const Machine machine;
  const auto fails = [&machine](const ServiceQuery& service, const std::string& state) {
    client.service = service;
    Fails(machine, {"--yes"}, "the service must be stopped, but its state is " + state + kStopIt);
  };
  fails({0, 4}, "running");
  fails({0, 3}, "stopping");
  fails({5, 0}, "not known (error 5)");
  client.service = {1060, 0};
  client.unreachable = 0;
  Fails(machine, {"--yes"}, "the service runs in a console; end it there first");
  client.refused = {"Ping"};
  Fails(machine, {"--yes"}, "the service runs in a console; end it there first");
  CHECK(machine.Folder().IsEmpty());
  client.unreachable = kServerUnavailable;
  CHECK(Import(machine, {"--yes"}).exitCode == 0);
}

TEST_CASE("an event log that cannot be read changes nothing") {
  const Machine machine;
  client.eventsError = 120;
  Fails(machine, {"--yes"},
        "the System log cannot be read (error 120); --from reads an export of it");
  client.eventsError = 0;
  client.systemLog = {};
  Fails(machine, {"--yes"}, "the System log: no event of it tells when the machine was in use");
  client.systemLog = {"<Event>"};
  Fails(machine, {"--yes"}, "the System log: line 1: <Event> has no end");
  const std::string missing = FileName(machine.Folder(), L"none.xml");
  Fails(machine, {"--yes", "--from", missing},
        missing + ": cannot be read: No such file or directory");
  CHECK(machine.Folder().IsEmpty());
}

TEST_CASE("settings from which nothing can be learnt change nothing") {
  const Machine machine;
  settings.defaults.predictorValues.clear();
  Fails(machine, {"--yes"},
        "SOFTWARE\\Corisk\\Z7: DaysInCycle, MinutesInDay, FirstLastWeight, SecondLastWeight, "
        "AgregationWeight are missing: No weigths specified");
  CHECK(machine.Folder().IsEmpty());
}

TEST_CASE("without a data folder nothing is imported") {
  const Machine machine;
  settings.dataFolder = L"";
  Fails(machine, {"--yes"}, "Windows does not say where the data folder is");
}

}  // namespace dozewell::ctl
