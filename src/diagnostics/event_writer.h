#ifndef DOZEWELL_DIAGNOSTICS_EVENT_WRITER_H_
#define DOZEWELL_DIAGNOSTICS_EVENT_WRITER_H_

#include <cstdint>

namespace dozewell {

// Messages of the service. No call fails, and any thread may make it.

// The source of all events.
inline constexpr wchar_t kEventSourceName[] = L"Dozewell Service";

inline constexpr uint16_t kEventSuccess = 0;
inline constexpr uint16_t kEventError = 1;
inline constexpr uint16_t kEventInformation = 4;

// The argument of events that stand for an error without a code of its own.
inline constexpr uint32_t kUnspecifiedError = 0x80004005;

// Writes one event. `format` holds at most one conversion, for `argument` (see message_format.h);
// a format of 1000 characters or more is not reported. When the log refuses the event, usually
// because it is full, the whole log is cleared and the event written once more.
void LogServiceEvent(const wchar_t* format, uint32_t argument, uint16_t eventType);

// Logs the text as an error event with kUnspecifiedError and traces it to the debugger.
void ReportStateMachineError(const wchar_t* text);

// The same with argument 0 for narrow text, each byte becoming the character of the same value.
// Null stands for "Unknown exception".
void LogNarrowAndTrace(const char* text);

}  // namespace dozewell

#endif  // DOZEWELL_DIAGNOSTICS_EVENT_WRITER_H_
