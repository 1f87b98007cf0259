#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "base/file.h"
#include "base/utf8.h"
#include "fakes/client_machine.h"
#include "fakes/settings_fake.h"
#include "replay/file_configurations.h"
#include "support/calls.h"
#include "support/text_parts.h"

namespace dozewell::ctl {
namespace {

using fakes::ClientMachine;
using fakes::ClientRun;
using fakes::Ctl;
using fakes::Fails;
using fakes::Number32;
using fakes::settings;
using fakes::Text;
using fakes::Works;

fakes::Value& Predictor(fakes::Key& key, const char* name) {
  return key.predictorValues[{kPredictorSection, name}];
}

// A value in each of the keys, in two and in none, and of each kind.
void Provide() {
  ClientMachine::Provision();
  settings.current.values = {{L"EnableZ7Feature", Number32(0)},
                             {L"HistoryLimit", Number32(0xFFFFFFFF)},
                             {L"OptimizerDelay", {fakes::ValueType::kOther, {1, 2, 3, 4, 5}}}};
  settings.branding.values = {{L"OptimizerDelay", Number32(5)}};
  Predictor(settings.current, "Strength") = Number32(2);
  Predictor(settings.current, "Best2") = Text("45,45,10,20,20,12");
  Predictor(settings.current, "Best7") = Text("-1");
  Predictor(settings.branding, "StrengthHigh") = Text("60\n5");
  Predictor(settings.current, "DayGrouping") = {fakes::ValueType::kOther, {1}};
  Predictor(settings.defaults, "DayGrouping") = Text("12");
  Predictor(settings.defaults, "WR") = Text("10, 50");
}

}  // namespace

TEST_CASE("the settings in force are exported with the keys that they come from") {
  const ClientMachine machine;
  Provide();
  Works(machine, {"settings", "export"},
        "# The settings in force, each with the key that it comes from, for dozewell-replay "
        "--settings.\n"
        "\n[Machine]\nName=OFFICE-7\nZone=W. Europe Standard Time\n"
        "\n[Settings]\n"
        "# Default\nTimeResolution=30\n"
        "# Current\nHistoryLimit=-1\n"
        "# no key has it; the service takes this\n# EnableDynamicHA=0\n"
        "# no key has it; the service takes this\n# DisablePrediction=0\n"
        "# no key has it; the service takes this\n# OptimizerInterval=30\n"
        "# Branding\nOptimizerDelay=5\n"
        "\n[Start]\n"
        "# Current\nEnableZ7Feature=0\n"
        "# Default\nTotalAttempts=3\n"
        "# Default\nCurrentAttempt=3\n"
        "# no key has it\n# TotalOptimizerAttemptsInDCmode=\n"
        "# no key has it\n# CurrentOptimizerAttemptsInDCmode=\n"
        "# no key has it; the service takes this\n# DebugLogging=0\n"
        "\n[CyclicProbabilityPredictor]\n"
        "# no key has it\n# Predictor=\n"
        "# no key has it\n# WakeTimer=\n"
        "# Default\nDaysInCycle=1\n"
        "# Default\nMinutesInDay=1440\n"
        "# Default\nFirstLastWeight=2\n"
        "# Default\nSecondLastWeight=1\n"
        "# Default\nAgregationWeight=1\n"
        "# Branding\nStrengthHigh=60\t5\n"
        "# Default\nStrengthLow=30\n"
        "# no key has it\n# UseDualStrength=\n"
        "# Current\nDayGrouping=\n"
        "# no key has it\n# FirstLastWeightRange=\n"
        "# no key has it\n# SecondLastWeightRange=\n"
        "# no key has it\n# StrengthHighRange=\n"
        "# no key has it\n# StrengthLowRange=\n"
        "# no key has it\n# DayGroupingRange=\n"
        "# Default\nWR=10, 50\n"
        "# Current\nStrength=2\n"
        "# Current\nBest2=45,45,10,20,20,12\n");
}

TEST_CASE("exported settings are those of the machine for dozewell-replay") {
  const ClientMachine machine;
  Provide();
  const ClientRun run = Ctl(machine, {"settings", "export"});
  std::vector<std::string> missing;
  replay::FileConfigurations file(replay::SettingsFile(run.output, "s.ini"), missing);
  const MachineIdentity read = file.Identity();
  CHECK(read.name == "OFFICE-7");
  CHECK(read.zone == "W. Europe Standard Time");
  const std::string mark = "\"settings\":\"" + read.settings.value() + "\"";
  CHECK(Contains(Ctl(machine, {"ping", "--json"}).identity, mark));
  Predictor(settings.current, "StrengthHigh") = Text("61");
  CHECK_FALSE(Contains(Ctl(machine, {"ping", "--json"}).identity, mark));
}

TEST_CASE("settings are shown for people and for programs") {
  const ClientMachine machine;
  Provide();
  const std::string table = Ctl(machine, {"settings", "show"}).output;
  CHECK(
      table.starts_with("Settings\n"
                        "  TimeResolution                   Default   30\n"
                        "  HistoryLimit                     Current   -1\n"
                        "  EnableDynamicHA                  built in  0\n"));
  CHECK(Contains(table, "\nStart\n  EnableZ7Feature                  Current   0\n"));
  CHECK(Contains(table, "  CurrentOptimizerAttemptsInDCmode nowhere   -\n"));
  CHECK(Contains(table, "  StrengthHigh                     Branding  60 5\n"));
  const std::string json = Ctl(machine, {"settings", "show", "--json"}).output;
  CHECK(
      json.starts_with("{\"settings\":[{\"section\":\"Settings\",\"name\":\"TimeResolution\","
                       "\"value\":\"30\",\"key\":\"Default\"},"));
  CHECK(Contains(json, "\"name\":\"EnableDynamicHA\",\"value\":\"0\",\"key\":null}"));
  CHECK(Contains(json, "\"name\":\"TotalOptimizerAttemptsInDCmode\",\"value\":null,\"key\":null}"));
}

TEST_CASE("exported settings replace a file only when the user agrees") {
  ClientMachine machine;
  Provide();
  const std::wstring path = machine.Folder().File(L"s.ini");
  std::string name = NarrowToUtf8(path);
  for (char& c : name) c = c == '\\' ? '/' : c;
  const auto size = [&path] { return ReadWholeFile(path).value().size(); };
  ClientRun run = Ctl(machine, {"settings", "export", name});
  CHECK(run.exitCode == 0);
  CHECK(run.questions.empty());
  CHECK(run.output == name + ": " + std::to_string(size()) + " bytes\n");
  const size_t whole = size();

  WriteWholeFile(path, "old", 3);
  run = Ctl(machine, {"settings", "export", name});
  CHECK(run.exitCode == 1);
  CHECK(run.questions == Calls{name + " is there already. Replace it?"});
  CHECK(run.messages == Calls{name + ": stays as it is"});
  CHECK(size() == 3);
  machine.isTerminal = false;
  Fails(machine, {"settings", "export", name}, 2, name + ": is there already; --yes replaces it");
  CHECK(size() == 3);
  run = Ctl(machine, {"settings", "export", name, "--yes", "--json"});
  CHECK(run.output == "{\"file\":\"" + name + "\",\"bytes\":" + std::to_string(whole) + "}\n");
  CHECK(size() == whole);
  Fails(machine, {"settings", "export", "--json"}, 2,
        "--json prints to standard output, so the settings cannot be written there");
}

}  // namespace dozewell::ctl
