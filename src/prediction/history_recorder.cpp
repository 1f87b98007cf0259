#include "prediction/history_recorder.h"

#include <mutex>
#include <vector>

#include "base/clock.h"
#include "base/file.h"
#include "base/lock.h"
#include "diagnostics/debugger.h"
#include "prediction/history_file.h"
#include "settings/data_folder.h"
#include "settings/setting_names.h"
#include "settings/settings_store.h"

namespace dozewell {
namespace {

// The records made since the history was last saved. Never destroyed, like the lock that guards it.
std::vector<HistoryRecord>& pendingRecords = *new std::vector<HistoryRecord>;

}  // namespace

void AppendToHistory(int64_t seconds, bool asleep) {
  pendingRecords.push_back({static_cast<double>(seconds), asleep ? 1U : 0U, 0});
}

void AH_SaveHistory() {
  TraceToDebugger(L"AH_SaveHistory\n");
  // Path and cutoff need no lock, so they are found before it is taken.
  const std::wstring path = PathInFolder(GetDataFolder(), kHistoryFileName);
  const uint32_t limitDays = SettingOr(kHistoryLimitName, kDefaultHistoryLimitDays);
  const double cutoff = HistoryCutoff(UtcSecondsNow(), limitDays);

  const std::lock_guard guard(EngineLock);
  const auto file = ReadWholeFile(path);
  const auto records = MergeHistory(file ? &*file : nullptr, pendingRecords, cutoff);
  pendingRecords.clear();
  WriteWholeFile(path, records.data(), records.size() * sizeof(HistoryRecord));
}

void ClearPendingHistory() { pendingRecords.clear(); }

}  // namespace dozewell
