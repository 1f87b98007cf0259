#ifndef DOZEWELL_EVENT_LOG_EVENT_LOG_FILE_H_
#define DOZEWELL_EVENT_LOG_EVENT_LOG_FILE_H_

#include <string>
#include <string_view>
#include <vector>

#include "event_log/log_event.h"

namespace dozewell {

// The events of an export of the Windows System log, in the order of the file: <Event> elements one
// after the other or within one root, in UTF-8 or UTF-16. Throws EventLogError, with `name` and the
// line, for anything else.
std::vector<LogEvent> ParseEventLog(std::string_view file, const std::string& name);

}  // namespace dozewell

#endif  // DOZEWELL_EVENT_LOG_EVENT_LOG_FILE_H_
