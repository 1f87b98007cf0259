#include "prediction/history_recorder.h"

#include <doctest/doctest.h>

#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <vector>

#include "base/file.h"
#include "base/lock.h"
#include "fakes/clock_fake.h"
#include "fakes/lock_fake.h"
#include "fakes/settings_fake.h"
#include "prediction/history_file.h"
#include "support/temp_folder.h"

namespace dozewell {
namespace {

constexpr int64_t kDay = 86400;
constexpr int64_t kNow = 1795219200;  // 2026-11-21 00:00

// A data folder with nothing in it, and a clock.
struct Recorder {
  TempFolder folder;

  Recorder() {
    fakes::ResetSettings();
    fakes::settings.dataFolder = folder.Path() + L"\\";
    fakes::clock.utcSeconds = kNow;
    ClearPendingHistory();
  }

  void SetFile(const std::vector<HistoryRecord>& records) {
    WriteWholeFile(folder.File(L"zs7state.dat"), records.data(),
                   records.size() * sizeof(HistoryRecord));
  }
  std::vector<unsigned char> File() { return ReadWholeFile(folder.File(L"zs7state.dat")).value(); }
};

std::vector<unsigned char> FileOf(const std::vector<HistoryRecord>& records) {
  std::vector<unsigned char> bytes(records.size() * sizeof(HistoryRecord));
  if (!bytes.empty()) std::memcpy(bytes.data(), records.data(), bytes.size());
  return bytes;
}

}  // namespace

TEST_CASE("every record given is kept, in use as 0 and asleep as 1") {
  Recorder recorder;
  AppendToHistory(kNow, /*asleep=*/false);
  AppendToHistory(kNow + 1, /*asleep=*/true);
  AppendToHistory(kNow + 2, /*asleep=*/true);
  AH_SaveHistory();
  CHECK(recorder.File() == FileOf({{kNow, 0, 0}, {kNow + 1, 1, 0}, {kNow + 2, 1, 0}}));
}

TEST_CASE("a save empties the pending records") {
  Recorder recorder;
  AppendToHistory(kNow, /*asleep=*/true);
  AH_SaveHistory();
  RemoveFile(recorder.folder.File(L"zs7state.dat"));
  AH_SaveHistory();
  CHECK(recorder.File().empty());
}

TEST_CASE("cleared records are not saved") {
  Recorder recorder;
  AppendToHistory(kNow, /*asleep=*/true);
  ClearPendingHistory();
  AH_SaveHistory();
  CHECK(recorder.File().empty());
}

TEST_CASE("what is recorded is the file and then what is pending, each later than the last") {
  Recorder recorder;
  CHECK(RecordedHistory().empty());
  recorder.SetFile({{kNow, 1, 0}, {kNow + 60, 0, 0}, {kNow + 30, 1, 0}});
  AppendToHistory(kNow + 60, /*asleep=*/true);
  AppendToHistory(kNow + 90, /*asleep=*/true);
  const std::vector<HistoryRecord> recorded = RecordedHistory();
  CHECK(FileOf(recorded) == FileOf({{kNow, 1, 0}, {kNow + 60, 0, 0}, {kNow + 90, 1, 0}}));
  // It is not a save.
  AH_SaveHistory();
  CHECK(recorder.File() == FileOf({{kNow, 1, 0}, {kNow + 60, 0, 0}, {kNow + 90, 1, 0}}));
}

TEST_CASE("without a history limit records older than 60 days are dropped") {
  Recorder recorder;
  recorder.SetFile({{kNow - 5184001, 1, 0}, {kNow - 5184000, 0, 0}, {kNow - 1, 1, 0}});
  AH_SaveHistory();
  CHECK(recorder.File() == FileOf({{kNow - 5184000, 0, 0}, {kNow - 1, 1, 0}}));
}

TEST_CASE("the history limit counts days") {
  Recorder recorder;
  fakes::settings.defaults.values[L"HistoryLimit"] = fakes::Number32(2);
  recorder.SetFile({{kNow - 2 * kDay - 1, 1, 0}, {kNow - 2 * kDay, 0, 0}});
  AH_SaveHistory();
  CHECK(recorder.File() == FileOf({{kNow - 2 * kDay, 0, 0}}));
}

TEST_CASE("pending records older than the limit are written, ones out of order are not") {
  Recorder recorder;
  AppendToHistory(kNow - 100 * kDay, /*asleep=*/false);
  AppendToHistory(kNow - 100 * kDay, /*asleep=*/true);
  AppendToHistory(kNow, /*asleep=*/true);
  AH_SaveHistory();
  CHECK(recorder.File() == FileOf({{kNow - 100 * kDay, 0, 0}, {kNow, 1, 0}}));
}

// Nothing is lost for a file that cannot be written for a while.
TEST_CASE("a history that cannot be written is not reported, and the pending records are kept") {
  Recorder recorder;
  AppendToHistory(kNow, /*asleep=*/true);
  fakes::settings.dataFolder = recorder.folder.File(L"missing");
  CHECK_NOTHROW(AH_SaveHistory());
  CHECK(recorder.folder.IsEmpty());
  AppendToHistory(kNow + 1, /*asleep=*/false);
  fakes::settings.dataFolder = recorder.folder.Path();
  AH_SaveHistory();
  CHECK(recorder.File() == FileOf({{kNow, 1, 0}, {kNow + 1, 0, 0}}));
  RemoveFile(recorder.folder.File(L"zs7state.dat"));
  AH_SaveHistory();
  CHECK(recorder.File().empty());
}

TEST_CASE("a history is read, merged and written under the engine's lock") {
  Recorder recorder;
  AppendToHistory(kNow, true);
  std::vector<unsigned char> saved;
  fakes::locks.beforeTaking = [&](const Lock& lock) {
    if (&lock == &EngineLock) recorder.SetFile({{kNow - 1, 0, 0}});
  };
  fakes::locks.afterFreeing = [&](const Lock& lock) {
    if (&lock == &EngineLock) saved = recorder.File();
  };
  AH_SaveHistory();
  fakes::ResetLocks();
  CHECK(saved == FileOf({{kNow - 1, 0, 0}, {kNow, 1, 0}}));
  CHECK(recorder.File() == saved);
}

TEST_CASE(
    "a history that exists and does not open is left alone, and the pending records are kept") {
  Recorder recorder;
  const std::wstring file = recorder.folder.File(L"zs7state.dat");
  std::filesystem::create_directory(PathToSystem(file));
  AppendToHistory(kNow, /*asleep=*/true);
  AH_SaveHistory();
  CHECK(std::filesystem::is_directory(PathToSystem(file)));
  std::filesystem::remove(PathToSystem(file));
  CHECK(recorder.folder.IsEmpty());
  AH_SaveHistory();
  CHECK(recorder.File() == FileOf({{kNow, 1, 0}}));
}

TEST_CASE("of records that could not be saved the newest 10,000 are kept") {
  Recorder recorder;
  for (int64_t second = 0; second < 10005; ++second)
    AppendToHistory(kNow + second, second % 2 == 0);
  fakes::settings.dataFolder = recorder.folder.File(L"missing");
  AH_SaveHistory();
  AppendToHistory(kNow + 10005, /*asleep=*/true);
  fakes::settings.dataFolder = recorder.folder.Path();
  AH_SaveHistory();
  const std::vector<HistoryRecord> saved = WholeRecords(recorder.File());
  REQUIRE(saved.size() == 10001);
  CHECK(saved.front().time == kNow + 5);
  CHECK(saved.back().time == kNow + 10005);
}

TEST_CASE("any number of records is saved when nothing fails") {
  Recorder recorder;
  for (int64_t second = 0; second < 10005; ++second)
    AppendToHistory(kNow + second, second % 2 == 0);
  AH_SaveHistory();
  CHECK(WholeRecords(recorder.File()).size() == 10005);
}

TEST_CASE("a save that is written leaves nothing beside the file") {
  Recorder recorder;
  for (int save = 0; save < 2; ++save) {
    AppendToHistory(kNow + save, /*asleep=*/true);
    AH_SaveHistory();
    RemoveFile(recorder.folder.File(L"zs7state.dat"));
    CHECK(recorder.folder.IsEmpty());
  }
}

TEST_CASE("what an interrupted save left complete beside the file is the history") {
  Recorder recorder;
  recorder.SetFile({{kNow, 1, 0}});
  const HistoryRecord newer[] = {{kNow, 1, 0}, {kNow + 1, 0, 0}};
  WriteWholeFile(recorder.folder.File(L"zs7state.dat.new"), newer, sizeof(newer));
  AppendToHistory(kNow + 2, /*asleep=*/true);
  AH_SaveHistory();
  CHECK(recorder.File() == FileOf({{kNow, 1, 0}, {kNow + 1, 0, 0}, {kNow + 2, 1, 0}}));
}

TEST_CASE("an empty data folder fails the save, which keeps the pending records") {
  Recorder recorder;
  AppendToHistory(kNow, /*asleep=*/true);
  fakes::settings.dataFolder.clear();
  CHECK_THROWS_WITH_AS(AH_SaveHistory(), "invalid string position", std::out_of_range);
  fakes::settings.dataFolder = recorder.folder.Path();
  AH_SaveHistory();
  CHECK(recorder.File() == FileOf({{kNow, 1, 0}}));
}

}  // namespace dozewell
