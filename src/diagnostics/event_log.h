#ifndef DOZEWELL_DIAGNOSTICS_EVENT_LOG_H_
#define DOZEWELL_DIAGNOSTICS_EVENT_LOG_H_

#include <cstdint>

namespace dozewell {

// The system's event log. Any thread.

// An event source registered on this machine; null when registering failed.
using EventSource = void*;

// The caller closes the source with CloseEventSource.
EventSource OpenEventSource(const wchar_t* name);

// Writes one event of category 0 and identifier 0 that consists of `message` alone. False when the
// log did not take it.
bool ReportToEventLog(EventSource source, uint16_t eventType, const wchar_t* message);

// Empties the log that the source writes to, without a backup; a failure is ignored.
void ClearWholeEventLog(EventSource source);

// Null is allowed and does nothing.
void CloseEventSource(EventSource source);

}  // namespace dozewell

#endif  // DOZEWELL_DIAGNOSTICS_EVENT_LOG_H_
