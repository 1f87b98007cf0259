#ifndef DOZEWELL_IMPORT_POWERWATCH_FILE_H_
#define DOZEWELL_IMPORT_POWERWATCH_FILE_H_

#include <string>
#include <string_view>
#include <vector>

#include "event_log/event_log_history.h"
#include "event_log/log_event.h"

namespace dozewell {

// What a file of dozewell-powerwatch says, as an event log would say it.
struct PowerwatchLog {
  std::vector<LogEvent> events;
  LocalClock clock;  // the local time as the file has it
};

// Whether a text begins as such a file does.
bool IsPowerwatch(std::string_view text);

// Throws EventLogError, with `name` and the line, for a line that is not as the watch writes it.
PowerwatchLog ParsePowerwatch(std::string_view text, const std::string& name);

}  // namespace dozewell

#endif  // DOZEWELL_IMPORT_POWERWATCH_FILE_H_
