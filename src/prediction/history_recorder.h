#ifndef DOZEWELL_PREDICTION_HISTORY_RECORDER_H_
#define DOZEWELL_PREDICTION_HISTORY_RECORDER_H_

#include <cstdint>
#include <vector>

#include "prediction/history_file.h"

namespace dozewell {

// Appends a record to the pending ones: the wall-clock seconds at which the machine came into use
// or left it. Any thread; waits for no file.
void AppendToHistory(int64_t seconds, bool asleep);

// Merges the pending records into the history file and forgets them. When the file cannot be read
// or written, which is not reported, the newest 10,000 are kept for the next save. Throws
// std::out_of_range("invalid string position") without a data folder. Any thread that does not hold
// ControllerLock, and the control handler's; takes EngineLock.
void AH_SaveHistory();

// All that is recorded: what counts in the history file, and the pending records behind it. Without
// a file that can be read, the pending records alone. Throws
// std::out_of_range("invalid string position") without a data folder. Takes EngineLock.
std::vector<HistoryRecord> RecordedHistory();

// Forgets the pending records. Under EngineLock, so that no save has a copy of them.
void ClearPendingHistory();

}  // namespace dozewell

#endif  // DOZEWELL_PREDICTION_HISTORY_RECORDER_H_
