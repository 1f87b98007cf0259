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

// The wall-clock seconds of a time in seconds since 1970, UTC, on the machine whose log it is;
// nothing for one that cannot be told.
using LocalClock = std::function<std::optional<int64_t>(int64_t utcSeconds)>;

// What an event log makes of a machine's past.
struct EventLogHistory {
  std::vector<HistoryRecord> records;  // by turns in use and asleep, in strictly increasing order
  size_t wakesLeftOut = 0;
  size_t unexpectedEnds = 0;
  ClockCorrections clock;
};

// The history that the events of a log, in any order, tell. Where local time goes back at the end
// of daylight saving, records follow each other by a second instead.
EventLogHistory HistoryFromEvents(std::vector<LogEvent> events, const LocalClock& localClock);

}  // namespace dozewell

#endif  // DOZEWELL_EVENT_LOG_EVENT_LOG_HISTORY_H_
