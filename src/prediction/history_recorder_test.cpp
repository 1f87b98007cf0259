#include "prediction/history_recorder.h"

#include <doctest/doctest.h>

#include <cstring>
#include <stdexcept>
#include <vector>

#include "base/file.h"
#include "fakes/clock_fake.h"
#include "fakes/settings_fake.h"
#include "prediction/history_file.h"
#include "support/local_times.h"
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

  void Record(SMEvent event, int64_t seconds) {
    TmFromSeconds(seconds, fakes::clock.localTime);
    AH_RecordHistoryEvent(SMEventData(event));
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

TEST_CASE("every event given is recorded, asleep for all but Activating") {
  Recorder recorder;
  recorder.Record(SMEvent::Activating, kNow);
  recorder.Record(SMEvent::Suspend, kNow + 1);
  recorder.Record(SMEvent::ShuttingDown, kNow + 2);
  recorder.Record(SMEvent::Uninitializing, kNow + 3);
  AH_SaveHistory();
  CHECK(recorder.File() ==
        FileOf({{kNow, 0, 0}, {kNow + 1, 1, 0}, {kNow + 2, 1, 0}, {kNow + 3, 1, 0}}));
}

TEST_CASE("daylight saving does not move a recorded time") {
  Recorder recorder;
  fakes::clock.localTime = LocalTime(2026, 7, 1, 12);
  fakes::clock.localTime.tm_isdst = 1;
  AH_RecordHistoryEvent(SMEventData(SMEvent::Suspend));
  AH_SaveHistory();
  CHECK(recorder.File() == FileOf({{1782907200, 1, 0}}));
}

TEST_CASE("a save empties the pending records") {
  Recorder recorder;
  recorder.Record(SMEvent::Suspend, kNow);
  AH_SaveHistory();
  RemoveFile(recorder.folder.File(L"zs7state.dat"));
  AH_SaveHistory();
  CHECK(recorder.File().empty());
}

TEST_CASE("cleared records are not saved") {
  Recorder recorder;
  recorder.Record(SMEvent::Suspend, kNow);
  ClearPendingHistory();
  AH_SaveHistory();
  CHECK(recorder.File().empty());
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
  recorder.Record(SMEvent::Activating, kNow - 100 * kDay);
  recorder.Record(SMEvent::Suspend, kNow - 100 * kDay);
  recorder.Record(SMEvent::Suspend, kNow);
  AH_SaveHistory();
  CHECK(recorder.File() == FileOf({{kNow - 100 * kDay, 0, 0}, {kNow, 1, 0}}));
}

TEST_CASE("a history that cannot be written is left at that, and the pending records are gone") {
  Recorder recorder;
  recorder.Record(SMEvent::Suspend, kNow);
  fakes::settings.dataFolder = recorder.folder.File(L"missing");
  CHECK_NOTHROW(AH_SaveHistory());
  CHECK(recorder.folder.IsEmpty());
  fakes::settings.dataFolder = recorder.folder.Path();
  AH_SaveHistory();
  CHECK(recorder.File().empty());
}

TEST_CASE("an empty data folder fails the save, which keeps the pending records") {
  Recorder recorder;
  recorder.Record(SMEvent::Suspend, kNow);
  fakes::settings.dataFolder.clear();
  CHECK_THROWS_WITH_AS(AH_SaveHistory(), "invalid string position", std::out_of_range);
  fakes::settings.dataFolder = recorder.folder.Path();
  AH_SaveHistory();
  CHECK(recorder.File() == FileOf({{kNow, 1, 0}}));
}

}  // namespace dozewell
