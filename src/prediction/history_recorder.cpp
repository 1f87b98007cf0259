#include "prediction/history_recorder.h"

#include <cstddef>
#include <mutex>
#include <vector>

#include "base/clock.h"
#include "base/durable_file.h"
#include "base/file.h"
#include "base/lock.h"
#include "diagnostics/debugger.h"
#include "prediction/history_file.h"
#include "settings/data_folder.h"
#include "settings/setting_names.h"
#include "settings/settings_store.h"

namespace dozewell {
namespace {

// How many records are kept when the history could not be written.
constexpr size_t kMostKept = 10000;

// The records made since the history was last saved, and what guards them. Records are appended
// under this lock alone, and taken away under EngineLock too. Never destroyed, like all locks.
Lock& PendingLock = *new Lock;
std::vector<HistoryRecord>& pendingRecords = *new std::vector<HistoryRecord>;

std::vector<HistoryRecord> CopyOfPending() {
  const std::lock_guard guard(PendingLock);
  return pendingRecords;
}

void ForgetOldest(size_t count) {
  const std::lock_guard guard(PendingLock);
  const auto begin = pendingRecords.begin();
  pendingRecords.erase(begin, begin + static_cast<std::ptrdiff_t>(count));
}

void ForgetAllBut(size_t most) {
  const std::lock_guard guard(PendingLock);
  if (pendingRecords.size() > most) ForgetOldest(pendingRecords.size() - most);
}

// Under EngineLock. What is recorded meanwhile stays pending.
bool MergeIntoFile(const std::wstring& path, double cutoff) {
  const FileContent file = ReadBeforeWriting(path);
  if (file.failure && file.failure != FileFailure::Missing) return false;
  const std::vector<HistoryRecord> pending = CopyOfPending();
  const auto records = MergeHistory(file.failure ? nullptr : &file.bytes, pending, cutoff);
  if (!WriteDurableFile(path, records.data(), records.size() * sizeof(HistoryRecord))) return false;
  ForgetOldest(pending.size());
  return true;
}

}  // namespace

void AppendToHistory(int64_t seconds, bool asleep) {
  const std::lock_guard guard(PendingLock);
  pendingRecords.push_back({static_cast<double>(seconds), asleep ? 1U : 0U, 0});
}

void AH_SaveHistory() {
  TraceToDebugger(L"AH_SaveHistory\n");
  // Path and cutoff need no lock, so they are found before it is taken.
  const std::wstring path = PathInFolder(GetDataFolder(), kHistoryFileName);
  const uint32_t limitDays = SettingOr(kHistoryLimitName, kDefaultHistoryLimitDays);
  const double cutoff = HistoryCutoff(UtcSecondsNow(), limitDays);

  const std::lock_guard guard(EngineLock);
  if (!MergeIntoFile(path, cutoff)) ForgetAllBut(kMostKept);
}

std::vector<HistoryRecord> RecordedHistory() {
  const std::wstring path = PathInFolder(GetDataFolder(), kHistoryFileName);
  const std::lock_guard guard(EngineLock);
  std::vector<HistoryRecord> records = IncreasingRecords(ReadDurableFile(path).bytes);
  for (const HistoryRecord& record : CopyOfPending()) {
    if (records.empty() || record.time > records.back().time) records.push_back(record);
  }
  return records;
}

void ClearPendingHistory() {
  const std::lock_guard guard(PendingLock);
  pendingRecords.clear();
}

}  // namespace dozewell
