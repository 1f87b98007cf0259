#include "prediction/history_file.h"

#include <algorithm>
#include <cstring>

#include "base/numbers.h"
#include "base/wall_clock.h"

namespace dozewell {
namespace {

bool IsLater(const HistoryRecord& record, const std::vector<HistoryRecord>& records) {
  return records.empty() || record.time > records.back().time;
}

}  // namespace

std::vector<HistoryRecord> WholeRecords(std::span<const unsigned char> file) {
  std::vector<HistoryRecord> records(file.size() / sizeof(HistoryRecord));
  if (!records.empty()) {
    std::memcpy(records.data(), file.data(), records.size() * sizeof(HistoryRecord));
  }
  return records;
}

std::vector<HistoryRecord> IncreasingRecords(std::span<const unsigned char> file) {
  std::vector<HistoryRecord> counted;
  for (const HistoryRecord& record : WholeRecords(file)) {
    if (IsLater(record, counted)) counted.push_back(record);
  }
  return counted;
}

TimeLineEvent ToTimeLineEvent(const HistoryRecord& record) {
  TimeLineEvent event;
  TmFromSeconds(TruncateToInt64(record.time), event.time);
  event.state = record.asleep == 0 ? Activating : Suspend;
  return event;
}

std::vector<HistoryRecord> MergeHistory(const std::vector<unsigned char>* file,
                                        std::span<const HistoryRecord> pending, double cutoff) {
  std::vector<HistoryRecord> result;
  if (file != nullptr) {
    HistoryRecord record = {};
    // The read at the end of the file counts too: the bytes that it gets overlay the record before,
    // which is tested a second time when it gets none.
    for (size_t offset = 0; offset <= file->size(); offset += sizeof(record)) {
      const size_t got = std::min(sizeof(record), file->size() - offset);
      if (got > 0) std::memcpy(&record, file->data() + offset, got);
      if (record.time >= cutoff && IsLater(record, result)) result.push_back(record);
    }
  }
  for (const HistoryRecord& record : pending) {
    if (IsLater(record, result)) result.push_back(record);
  }
  return result;
}

double HistoryCutoff(int64_t utcSecondsNow, uint32_t limitDays) {
  return static_cast<double>(WrapSubtract64(utcSecondsNow, limitDays * kSecondsPerDay));
}

}  // namespace dozewell
