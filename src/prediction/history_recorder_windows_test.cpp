// The history in the service's own folder, while somebody else has it open.

#include <doctest/doctest.h>
#include <windows.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "base/clock.h"
#include "base/file.h"
#include "base/system_handle.h"
#include "prediction/history_file.h"
#include "prediction/history_recorder.h"
#include "settings/data_folder.h"
#include "support/program_data_windows.h"
#include "support/registry_windows.h"
#include "support/temp_folder.h"

namespace dozewell {
namespace {

// A data folder with a history of 41 records up to an hour ago, and three that are pending.
struct Learnt {
  support::CleanProductKeys keys;
  TempFolder scratch;
  support::ProgramDataAt programData{scratch.Path()};
  std::wstring path = GetDataFolder() + kHistoryFileName;
  int64_t start = UtcSecondsNow() - 7200;

  Learnt() {
    ClearPendingHistory();
    std::vector<HistoryRecord> records;
    for (int64_t i = 0; i < 41; ++i) {
      records.push_back({static_cast<double>(start + i * 60), static_cast<uint32_t>(i % 2), 0});
    }
    REQUIRE(WriteWholeFile(path, records.data(), records.size() * sizeof(HistoryRecord)));
    for (int64_t i = 41; i < 44; ++i) AppendToHistory(start + i * 60, i % 2 != 0);
  }
  ~Learnt() { ClearPendingHistory(); }

  size_t Records() const { return IncreasingRecords(ReadWholeFile(path).value()).size(); }
  SystemHandle Hold(DWORD sharing) const {
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, sharing, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    REQUIRE(file != INVALID_HANDLE_VALUE);
    return SystemHandle(file);
  }
};

}  // namespace

TEST_CASE("a reader who lets others only write loses no record of the history") {
  const Learnt learnt;
  {
    const SystemHandle reader = learnt.Hold(FILE_SHARE_WRITE);
    AH_SaveHistory();
  }
  CHECK(learnt.Records() == 41);
  AH_SaveHistory();
  CHECK(learnt.Records() == 44);
}

TEST_CASE("a reader, whatever others may do meanwhile, loses no record of the history") {
  for (DWORD sharing = 0; sharing < 8; ++sharing) {
    CAPTURE(sharing);
    const Learnt learnt;
    {
      const SystemHandle reader = learnt.Hold(sharing);
      AH_SaveHistory();
    }
    AppendToHistory(learnt.start + 44 * 60, /*asleep=*/false);
    AH_SaveHistory();
    CHECK(learnt.Records() == 45);
    CHECK_FALSE(ReadWholeFile(learnt.path + L".new").has_value());
    CHECK_FALSE(ReadWholeFile(learnt.path + L".unread").has_value());
  }
}

}  // namespace dozewell
