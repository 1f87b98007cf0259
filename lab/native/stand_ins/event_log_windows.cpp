#include <windows.h>

#include "stand_ins/failing_import.h"
#include "stand_ins/service_record.h"

// Stands in for the event log and for the debugger: what the service tells them is recorded.

namespace dozewell::lab {
namespace {

// Its address is the handle of every source.
char Source;

HANDLE WINAPI RegisterSource(const wchar_t* server, const wchar_t* name);
BOOL WINAPI Report(HANDLE source, WORD type, WORD category, DWORD id, void* user, WORD textCount,
                   DWORD dataSize, const wchar_t** texts, void* data);
BOOL WINAPI Clear(HANDLE source, const wchar_t* backup);
BOOL WINAPI Deregister(HANDLE source);
void WINAPI Trace(const wchar_t* text);

const Import<decltype(RegisterEventSourceW)> RegisterImport(SystemCallPlace("RegisterEventSourceW"),
                                                            RegisterSource);
const Import<decltype(ReportEventW)> ReportImport(SystemCallPlace("ReportEventW"), Report);
const Import<decltype(ClearEventLogW)> ClearImport(SystemCallPlace("ClearEventLogW"), Clear);
const Import<decltype(DeregisterEventSource)> DeregisterImport(
    SystemCallPlace("DeregisterEventSource"), Deregister);
const Import<decltype(OutputDebugStringW)> TraceImport(SystemCallPlace("OutputDebugStringW"),
                                                       Trace);

const wchar_t* OrNull(const wchar_t* text) { return text == nullptr ? L"(null)" : text; }

HANDLE WINAPI RegisterSource(const wchar_t* server, const wchar_t* name) {
  if (const uint32_t error = RegisterImport.CountCall()) return FailureOf<HANDLE>(error);
  // Every event has the same source, so only another one is recorded.
  if (server != nullptr || wcscmp(OrNull(name), L"Dozewell Service") != 0) {
    Record("event-source", name);
  }
  return &Source;
}

BOOL WINAPI Report(HANDLE source, WORD type, WORD category, DWORD id, void* user, WORD textCount,
                   DWORD dataSize, const wchar_t** texts, void* data) {
  if (const uint32_t error = ReportImport.CountCall()) return FailureOf<BOOL>(error);
  if (source != &Source) return FailureOf<BOOL>(ERROR_INVALID_HANDLE);
  if (category != 0 || id != 0 || user != nullptr || textCount != 1 || dataSize != 0 ||
      data != nullptr) {
    Record("event-form",
           Format("category %u id %lu texts %u data %lu", category, id, textCount, dataSize));
  }
  const wchar_t* const text = textCount == 0 ? nullptr : texts[0];
  switch (type) {
    case EVENTLOG_SUCCESS:
      Record("success", text);
      break;
    case EVENTLOG_ERROR_TYPE:
      Record("error", text);
      break;
    case EVENTLOG_INFORMATION_TYPE:
      Record("information", text);
      break;
    default:
      Record(Format("event-%u", type).c_str(), text);
  }
  return TRUE;
}

BOOL WINAPI Clear(HANDLE source, const wchar_t* backup) {
  if (const uint32_t error = ClearImport.CountCall()) return FailureOf<BOOL>(error);
  if (source != &Source) return FailureOf<BOOL>(ERROR_INVALID_HANDLE);
  Record("event-log", backup == nullptr ? L"cleared" : L"cleared with a backup");
  return TRUE;
}

BOOL WINAPI Deregister(HANDLE source) {
  if (const uint32_t error = DeregisterImport.CountCall()) return FailureOf<BOOL>(error);
  return source == &Source ? TRUE : FailureOf<BOOL>(ERROR_INVALID_HANDLE);
}

void WINAPI Trace(const wchar_t* text) {
  static_cast<void>(TraceImport.CountCall());
  Record("trace", text);
}

}  // namespace
}  // namespace dozewell::lab
