#include "prediction/history_recorder.h"

#include <mutex>
#include <vector>

#include "base/clock.h"
#include "base/file.h"
#include "base/lock.h"
#include "diagnostics/debugger.h"
#include "prediction/history_file.h"
#include "settings/data_folder.h"
#include "settings/settings_store.h"

namespace dozewell {
namespace {

// Recorded since the history was last saved. Never destroyed, like the lock that guards it.
std::vector<HistoryRecord>& pendingRecords = *new std::vector<HistoryRecord>;

}  // namespace

void AH_RecordHistoryEvent(const SMEventData& event) {
  TraceToDebugger(L"AH_RecordHistoryEvent\n");
  pendingRecords.push_back({static_cast<double>(SecondsFromTm(event.time)),
                            event.event == SMEvent::Activating ? 0U : 1U, 0});
}

void AH_SaveHistory() {
  TraceToDebugger(L"AH_SaveHistory\n");
  // What can be known without the lock is found out before it is taken.
  const std::wstring path = PathInFolder(GetDataFolder(), kHistoryFileName);
  uint32_t limitDays = kDefaultHistoryLimitDays;
  ReadSetting(L"HistoryLimit", limitDays, /*deleteAfterRead=*/false);
  const double cutoff = HistoryCutoff(UtcSecondsNow(), limitDays);

  const std::lock_guard guard(EngineLock);
  const auto file = ReadWholeFile(path);
  const auto records = MergeHistory(file ? &*file : nullptr, pendingRecords, cutoff);
  pendingRecords.clear();
  WriteWholeFile(path, records.data(), records.size() * sizeof(HistoryRecord));
}

void ClearPendingHistory() { pendingRecords.clear(); }

}  // namespace dozewell
