#include "diagnostics/event_writer.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <cwchar>
#include <memory>
#include <new>

#include "diagnostics/debugger.h"
#include "diagnostics/event_log.h"
#include "diagnostics/message_format.h"

namespace dozewell {
namespace {

constexpr size_t kFormatLimit = 1000;  // characters; formats this long are dropped

}  // namespace

void LogServiceEvent(const wchar_t* format, uint32_t argument, uint16_t eventType) {
  const EventSource source = OpenEventSource(kEventSourceName);
  if (source != nullptr && std::wcslen(format) < kFormatLimit) {
    MessageBuffer message;
    FormatMessageText(format, argument, message);
    if (!ReportToEventLog(source, eventType, message.data())) {
      ClearWholeEventLog(source);
      ReportToEventLog(source, eventType, message.data());
    }
  }
  CloseEventSource(source);
}

void ReportStateMachineError(const wchar_t* text) {
  LogServiceEvent(text, kUnspecifiedError, kEventError);
  TraceToDebugger(text);
}

void LogNarrowAndTrace(const char* text) {
  const char* const narrow = text != nullptr ? text : "Unknown exception";
  const size_t size = std::strlen(narrow) + 1;
  // This runs in exception handlers, so a lack of memory must not throw another exception.
  const std::unique_ptr<wchar_t[]> wide(new (std::nothrow) wchar_t[size]);
  if (!wide) return;
  std::transform(narrow, narrow + size, wide.get(),
                 [](char byte) { return static_cast<wchar_t>(static_cast<unsigned char>(byte)); });
  LogServiceEvent(wide.get(), 0, kEventError);
  TraceToDebugger(wide.get());
}

}  // namespace dozewell
