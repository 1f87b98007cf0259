#ifndef DOZEWELL_PREDICTION_HISTORY_RECORDER_H_
#define DOZEWELL_PREDICTION_HISTORY_RECORDER_H_

#include <cstdint>

namespace dozewell {

// Appends a record to the pending ones: the wall-clock seconds at which the machine came into use
// or left it. Under ControllerLock.
void AppendToHistory(int64_t seconds, bool asleep);

// Merges the pending records into the history file and forgets them, also when the file cannot be
// written, which is not reported. Throws std::out_of_range("invalid string position") without a
// data folder. Under ControllerLock; takes EngineLock.
void AH_SaveHistory();

// Forgets the pending records. Under ControllerLock.
void ClearPendingHistory();

}  // namespace dozewell

#endif  // DOZEWELL_PREDICTION_HISTORY_RECORDER_H_
