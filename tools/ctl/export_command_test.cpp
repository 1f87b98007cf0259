#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "base/file.h"
#include "base/utf8.h"
#include "common/history_io.h"
#include "common/machine_identity.h"
#include "fakes/client_machine.h"
#include "fakes/settings_fake.h"
#include "prediction/history_file.h"
#include "replay/file_configurations.h"
#include "support/calls.h"
#include "support/text_parts.h"

namespace dozewell::ctl {
namespace {

using fakes::ClientMachine;
using fakes::ClientRun;
using fakes::Ctl;
using fakes::Fails;
using fakes::settings;

// Three uses, of which the second begins and ends within a minute.
constexpr HistoryRecord kRecords[] = {
    {864000, 0, 0}, {867599, 1, 0}, {950400.5, 0, 0}, {950430.5, 1, 0}, {1036859, 0, 0}};

struct LearntMachine {
  ClientMachine machine;
  std::string file;

  LearntMachine() {
    ClientMachine::Provision();
    WriteWholeFile(settings.dataFolder + L"zs7state.dat", kRecords, sizeof(kRecords));
    file = NarrowToUtf8(machine.Folder().File(L"pc.csv"));
    for (char& c : file) c = c == '\\' ? '/' : c;
  }
  std::string Content() const {
    const auto bytes = ReadWholeFile(PathFromSystem(file)).value();
    return {bytes.begin(), bytes.end()};
  }
};

std::string Records(const std::string& content) {
  return content.substr(content.find("epoch_wallclock_seconds"));
}

}  // namespace

TEST_CASE("an anonymous export has whole minutes and no names") {
  const LearntMachine learnt;
  ClientRun run = Ctl(learnt.machine, {"export", "--anonymous", learnt.file});
  CHECK(run.exitCode == 0);
  CHECK(run.messages == Calls{});
  CHECK(run.output == learnt.file + ": 3 records, 2 left out\n");
  const std::string content = learnt.Content();
  CHECK(Records(content) == "epoch_wallclock_seconds,asleep\n864000,0\n867540,1\n1036800,0\n");
  CHECK_FALSE(Contains(content, "OFFICE-7"));
  CHECK_FALSE(Contains(content, "Europe"));
  CHECK(content.starts_with("#: # The settings in force"));
  run = Ctl(learnt.machine,
            {"export", "--anonymous", "--weeks", "-1", learnt.file, "--yes", "--json"});
  CHECK(run.output == "{\"file\":\"" + learnt.file +
                          "\",\"bytes\":" + std::to_string(learnt.Content().size()) +
                          ",\"records\":3,\"leftOut\":2}\n");
  CHECK(Records(learnt.Content()) ==
        "epoch_wallclock_seconds,asleep\n259200,0\n262740,1\n432000,0\n");
}

TEST_CASE("an export with names is the history as it is, and whose it is") {
  const LearntMachine learnt;
  CHECK(Ctl(learnt.machine, {"export", learnt.file}).output ==
        learnt.file + ": 5 records, 0 left out\n");
  const std::string content = learnt.Content();
  CHECK(Contains(content, "\n# {\"name\":\"OFFICE-7\","));
  CHECK(Contains(content, "\n#: Name=OFFICE-7\n"));
  std::vector<std::string> warnings;
  CHECK(LoadHistory(learnt.file, warnings).bytes == [] {
    const auto* const begin = reinterpret_cast<const unsigned char*>(kRecords);
    return std::vector<unsigned char>(begin, begin + sizeof(kRecords));
  }());
}

TEST_CASE("an exported file is history and settings for dozewell-replay") {
  const LearntMachine learnt;
  CHECK(Ctl(learnt.machine, {"export", "--anonymous", learnt.file}).exitCode == 0);
  std::vector<std::string> missing;
  replay::FileConfigurations file(replay::LoadSettings(learnt.file), missing);
  CHECK(file.Identity().name == std::nullopt);
  CHECK(Contains(Ctl(learnt.machine, {"ping", "--json"}).identity,
                 "\"settings\":\"" + file.Identity().settings.value() + "\""));
  const std::string plain = NarrowToUtf8(learnt.machine.Folder().File(L"plain.csv"));
  SaveCsvHistory(plain, kRecords, {});
  CHECK_THROWS_WITH(replay::LoadSettings(plain),
                    (plain + ": a CSV history without settings in it").c_str());
}

TEST_CASE("nothing is exported over a file, from no history, or under another name") {
  LearntMachine learnt;
  WriteWholeFile(PathFromSystem(learnt.file), "old", 3);
  const std::vector<std::string> command = {"export", "--anonymous", learnt.file};
  ClientRun run = Ctl(learnt.machine, command);
  CHECK(run.questions == Calls{learnt.file + " is there already. Replace it?"});
  CHECK(run.exitCode == 1);
  learnt.machine.isTerminal = false;
  Fails(learnt.machine, command, 2, learnt.file + ": is there already; --yes replaces it");
  CHECK(learnt.Content() == "old");
  Fails(learnt.machine, {"export", "pc.dat"}, 2, "pc.dat: the name of a CSV history ends in .csv");
  Fails(learnt.machine, {"export", "pc.csv", "--weeks", "1"}, 2, "--weeks goes with --anonymous");
  Fails(learnt.machine, {"export", "pc.csv", "--anonymous", "--weeks", "x"}, 2,
        "--weeks: not a whole number from -2000 to 2000: x");
  Fails(learnt.machine, {"export", "pc.csv", "--anonymous", "--weeks", "-2"}, 2,
        "--weeks: times before 1970 or after the year 3000 would come of it");
  Fails(learnt.machine, {"export", "-", "--json"}, 2,
        "--json prints to standard output, so the history cannot be written there");
  RemoveFile(settings.dataFolder + L"zs7state.dat");
  Fails(learnt.machine, {"export", "pc.csv"}, 4,
        NarrowToUtf8(settings.dataFolder) +
            "zs7state.dat: ignored: it cannot be opened; there is no history to export");
}

}  // namespace dozewell::ctl
