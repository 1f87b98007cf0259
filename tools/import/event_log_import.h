#ifndef DOZEWELL_IMPORT_EVENT_LOG_IMPORT_H_
#define DOZEWELL_IMPORT_EVENT_LOG_IMPORT_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/history_io.h"
#include "event_log/event_log_history.h"
#include "event_log/log_event.h"
#include "prediction/history_file.h"

namespace dozewell {

// A history that goes further back than the one it was.
struct ExtendedHistory {
  std::vector<HistoryRecord> records;
  size_t added = 0;  // how many of them, at its beginning, are new
};

// Puts those records of `older` before a history that are earlier than its first one. States
// alternate where the two meet: records at the history's beginning that only repeat what the
// machine was already doing are dropped. Both must be in strictly increasing order.
ExtendedHistory PutBefore(const std::vector<HistoryRecord>& older,
                          const std::vector<HistoryRecord>& history);

// What comes of an event log and the history that there is.
struct EventLogImport {
  size_t events = 0;
  EventLogHistory log;
  ExtendedHistory history;
};

// Puts what the events of a log tell before the history that there is, as the service would read
// it; nothing when there is none. Throws EventLogError, with the log's name, when they tell
// nothing.
EventLogImport ImportEvents(const std::string& logName, std::vector<LogEvent> events,
                            const LocalClock& localClock, const std::optional<History>& history);

// The local time of this machine, by the system's rules.
LocalClock SystemClock();

// "24 records, 2026-10-19 07:58 to 2026-10-26 18:03", of those that are new; "no records".
std::string AddedText(const EventLogImport& import);

// What was corrected and left out in the log, a line each; empty when nothing was.
std::string FindingsText(const EventLogImport& import);

// What a command says that has saved the import in the file `history`, in lines.
std::string ImportText(const EventLogImport& import, const std::string& history);

// A line on the file `data`: whether the history was learnt into it, or it was there before.
std::string LearntText(const std::string& data, bool learnt);

// All of it as a JSON object in one line, with its line feed.
std::string ImportJson(const EventLogImport& import, bool learnt);

}  // namespace dozewell

#endif  // DOZEWELL_IMPORT_EVENT_LOG_IMPORT_H_
