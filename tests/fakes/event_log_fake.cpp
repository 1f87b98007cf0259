#include "fakes/event_log_fake.h"

#include "base/utf8.h"
#include "diagnostics/debugger.h"
#include "diagnostics/event_log.h"
#include "fakes/journal.h"

namespace dozewell {
namespace fakes {

EventLog eventLog;

Calls EventLog::After(const std::string& prefix) const {
  Calls rests;
  for (const std::string& call : calls) {
    if (call.starts_with(prefix)) rests.push_back(call.substr(prefix.size()));
  }
  return rests;
}

namespace {

void NoteEventLogCall(const std::string& call) {
  eventLog.calls.push_back(call);
  journal.push_back(call);
}

}  // namespace
}  // namespace fakes

using fakes::eventLog;

EventSource OpenEventSource(const wchar_t* name) {
  eventLog.calls.push_back("open " + NarrowToUtf8(name));
  return eventLog.openFailer.Fails() ? nullptr : &eventLog;
}

bool ReportToEventLog(EventSource, uint16_t eventType, const wchar_t* message) {
  fakes::NoteEventLogCall("report " + std::to_string(eventType) + " " + NarrowToUtf8(message));
  return !eventLog.reportFailer.Fails();
}

void ClearWholeEventLog(EventSource) { fakes::NoteEventLogCall("clear"); }

void CloseEventSource(EventSource source) {
  eventLog.calls.push_back(source != nullptr ? "close" : "close null");
}

void TraceToDebugger(const wchar_t* text) {
  fakes::NoteEventLogCall("trace " + NarrowToUtf8(text));
}

}  // namespace dozewell
