#include <windows.h>

#include "diagnostics/event_log.h"

namespace dozewell {

EventSource OpenEventSource(const wchar_t* name) { return RegisterEventSourceW(nullptr, name); }

bool ReportToEventLog(EventSource source, uint16_t eventType, const wchar_t* message) {
  return ReportEventW(source, eventType, 0, 0, nullptr, 1, 0, &message, nullptr) != FALSE;
}

void ClearWholeEventLog(EventSource source) { ClearEventLogW(source, nullptr); }

void CloseEventSource(EventSource source) { DeregisterEventSource(source); }

}  // namespace dozewell
