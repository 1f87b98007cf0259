#ifndef DOZEWELL_PREDICTION_HISTORY_FILE_H_
#define DOZEWELL_PREDICTION_HISTORY_FILE_H_

#include <cstdint>
#include <span>
#include <vector>

#include "prediction/time_line.h"

namespace dozewell {

// The name of the history file in the data folder.
constexpr const wchar_t* kHistoryFileName = L"zs7state.dat";

// One record of the history, as it stands in the history file byte for byte.
struct HistoryRecord {
  double time;      // wall-clock seconds
  uint32_t asleep;  // 0 when the machine came into use, 1 when it left use
  uint32_t reserved;
};
static_assert(sizeof(HistoryRecord) == 16);

// The whole records of a history file as they stand, without a partial tail.
std::vector<HistoryRecord> WholeRecords(std::span<const unsigned char> file);

// The records of a history file that count. A record counts when it is later than the last one that
// counts.
std::vector<HistoryRecord> IncreasingRecords(std::span<const unsigned char> file);

// What the tracker learns from a record.
TimeLineEvent ToTimeLineEvent(const HistoryRecord& record);

// The records that a history file holds after a save: its own from `cutoff` on, in wall-clock
// seconds, and then all pending ones, each only if it is later than the one before it. A partial
// tail counts as a record whose missing bytes are those of the record before it, or zero. `file` is
// null when there is no file, which differs from an empty one.
std::vector<HistoryRecord> MergeHistory(const std::vector<unsigned char>* file,
                                        std::span<const HistoryRecord> pending, double cutoff);

// The oldest time that stays in the history: `limitDays` before `utcSecondsNow`. Records hold
// local time, so this is off by the time zone's offset.
double HistoryCutoff(int64_t utcSecondsNow, uint32_t limitDays);

}  // namespace dozewell

#endif  // DOZEWELL_PREDICTION_HISTORY_FILE_H_
