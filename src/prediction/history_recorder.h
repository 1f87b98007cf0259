#ifndef DOZEWELL_PREDICTION_HISTORY_RECORDER_H_
#define DOZEWELL_PREDICTION_HISTORY_RECORDER_H_

#include <cstdint>

#include "base/event_records.h"

namespace dozewell {

// The days that the history is kept for when "HistoryLimit" is set nowhere.
constexpr uint32_t kDefaultHistoryLimitDays = 60;

// Appends an event to the pending records. Under ControllerLock.
void AH_RecordHistoryEvent(const SMEventData& event);

// Merges the pending records into the history file and forgets them; a file that cannot be
// written is left at that. Throws std::out_of_range("invalid string position") without a data
// folder. Under ControllerLock; takes EngineLock.
void AH_SaveHistory();

// Forgets the pending records. Under ControllerLock.
void ClearPendingHistory();

}  // namespace dozewell

#endif  // DOZEWELL_PREDICTION_HISTORY_RECORDER_H_
