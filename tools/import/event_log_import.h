#ifndef DOZEWELL_IMPORT_EVENT_LOG_IMPORT_H_
#define DOZEWELL_IMPORT_EVENT_LOG_IMPORT_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/history_io.h"
#include "common/json.h"
#include "event_log/event_log_history.h"
#include "event_log/log_event.h"
#include "prediction/history_file.h"

namespace dozewell {

// A history that was extended backwards.
struct ExtendedHistory {
  std::vector<HistoryRecord> records;
  size_t added = 0;  // how many records at its beginning are new
};

// Puts the records of `older` that are earlier than a history's first one before it. States
// alternate where the two meet: records at the history's beginning that only repeat the state
// before them are dropped. Both must be in strictly increasing order.
ExtendedHistory PutBefore(const std::vector<HistoryRecord>& older,
                          const std::vector<HistoryRecord>& history);

// What was made of an event log and the existing history.
struct EventLogImport {
  const char* source = "the event log";  // as the user knows it
  size_t events = 0;
  EventLogHistory log;
  ExtendedHistory history;
};

// Puts the records that a log's events tell before those that the service would read from the
// existing history, if there is one. Throws EventLogError, with the log's name, when the events
// tell of no use.
EventLogImport ImportEvents(const std::string& logName, std::vector<LogEvent> events,
                            const LocalClock& localClock, const std::optional<History>& history);

// The local time of this machine, by the system's rules.
LocalClock SystemClock();

// The new records: "24 records, 2026-10-19 07:58 to 2026-10-26 18:03", or "no records".
std::string AddedText(const EventLogImport& import);

// What was corrected and left out, in lines; empty when nothing was.
std::string FindingsText(const EventLogImport& import);

// What a command says that has saved the import in the file `history`, in lines.
std::string ImportText(const EventLogImport& import, const std::string& history);

// A line on the file `data`: whether the history was learnt into it, or it was there before.
std::string LearntText(const std::string& data, bool learnt);

// All of it as a JSON object.
Json ImportJson(const EventLogImport& import, bool learnt);

}  // namespace dozewell

#endif  // DOZEWELL_IMPORT_EVENT_LOG_IMPORT_H_
