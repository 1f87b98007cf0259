#include <doctest/doctest.h>
#include <windows.h>

#include <cstring>
#include <string>

#include "diagnostics/debugger.h"
#include "diagnostics/event_log.h"
#include "diagnostics/event_writer.h"

namespace dozewell {
namespace {

// Receives one debugger output of this process at a time, as a debug monitor does.
class DebugMonitor {
 public:
  DebugMonitor()
      : bufferReady_(CreateEventW(nullptr, FALSE, FALSE, L"DBWIN_BUFFER_READY")),
        dataReady_(CreateEventW(nullptr, FALSE, FALSE, L"DBWIN_DATA_READY")),
        mapping_(CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0,
                                    sizeof(Output), L"DBWIN_BUFFER")) {
    REQUIRE(mapping_ != nullptr);
    output_ = static_cast<Output*>(MapViewOfFile(mapping_, FILE_MAP_WRITE, 0, 0, sizeof(Output)));
    REQUIRE(output_ != nullptr);
    SetEvent(bufferReady_);
  }
  ~DebugMonitor() {
    UnmapViewOfFile(output_);
    CloseHandle(mapping_);
    CloseHandle(dataReady_);
    CloseHandle(bufferReady_);
  }
  DebugMonitor(const DebugMonitor&) = delete;
  DebugMonitor& operator=(const DebugMonitor&) = delete;

  // The text that arrived since the last call.
  std::string Take() {
    REQUIRE(WaitForSingleObject(dataReady_, 0) == WAIT_OBJECT_0);
    CHECK(output_->processId == GetCurrentProcessId());
    std::string text = output_->text;
    std::memset(output_->text, 0, sizeof(output_->text));
    SetEvent(bufferReady_);
    return text;
  }

 private:
  struct Output {
    DWORD processId;
    char text[4096 - sizeof(DWORD)];
  };

  const HANDLE bufferReady_;
  const HANDLE dataReady_;
  const HANDLE mapping_;
  Output* output_ = nullptr;
};

}  // namespace

TEST_CASE("traced text reaches a debug monitor") {
  DebugMonitor monitor;
  TraceToDebugger(L"AH_LogEvent\n");
  CHECK(monitor.Take() == "AH_LogEvent\n");
  ReportStateMachineError(L"SM Error: State: Off, 100%d");
  CHECK(monitor.Take() == "SM Error: State: Off, 100%d");
  LogNarrowAndTrace("Version 0 expected");
  CHECK(monitor.Take() == "Version 0 expected");
  LogNarrowAndTrace(nullptr);
  CHECK(monitor.Take() == "Unknown exception");
}

TEST_CASE("the event log takes reports of every type under the service's source") {
  const EventSource source = OpenEventSource(L"Dozewell Service");
  REQUIRE(source != nullptr);
  for (const uint16_t eventType : {kEventSuccess, kEventError, kEventInformation}) {
    CHECK(ReportToEventLog(source, eventType, L"a test's message"));
  }
  CloseEventSource(source);
}

TEST_CASE("closing and clearing without a source is harmless") {
  CloseEventSource(nullptr);
  ClearWholeEventLog(nullptr);
  LogServiceEvent(L"a test's message, %d\n", 5, kEventInformation);
}

}  // namespace dozewell
