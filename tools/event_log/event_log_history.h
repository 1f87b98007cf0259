#ifndef DOZEWELL_EVENT_LOG_EVENT_LOG_HISTORY_H_
#define DOZEWELL_EVENT_LOG_EVENT_LOG_HISTORY_H_

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "event_log/clock_correction.h"
#include "event_log/log_event.h"
#include "prediction/history_file.h"

namespace dozewell {

// Converts seconds since 1970, UTC, to wall-clock seconds on the machine that wrote the log.
// Nothing for a time that cannot be converted.
using LocalClock = std::function<std::optional<int64_t>(int64_t utcSeconds)>;

// What an event log makes of a machine's past.
struct EventLogHistory {
  std::vector<HistoryRecord> records;  // in use and asleep alternate, and times increase strictly
  size_t wakesLeftOut = 0;
  size_t unexpectedEnds = 0;
  ClockCorrections clock;
};

// The history that the events of a log, in any order, tell. Records whose local time would go back
// at the end of daylight saving follow the one before by a second.
EventLogHistory HistoryFromEvents(std::vector<LogEvent> events, const LocalClock& localClock);

}  // namespace dozewell

#endif  // DOZEWELL_EVENT_LOG_EVENT_LOG_HISTORY_H_
