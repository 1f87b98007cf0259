#include <doctest/doctest.h>
#include <windows.h>

#include <bit>
#include <cstdint>
#include <string>

#include "diagnostics/event_log.h"
#include "diagnostics/event_writer.h"
#include "support/calls.h"
#include "support/system_calls_windows.h"

namespace dozewell {

using namespace support;

namespace {

const auto kSource = std::bit_cast<HANDLE>(uint64_t{0x900});

}  // namespace

TEST_CASE("an event has category and identifier 0, no user, no data and one string") {
  BOOL taken = TRUE;
  const ImportStub<"RegisterEventSourceW", decltype(RegisterEventSourceW)> open{kSource};
  const ImportStub<"ReportEventW", decltype(ReportEventW)> report{
      [&](HANDLE, WORD, WORD, DWORD, void*, WORD, DWORD, const wchar_t** strings, void*) {
        NoteSystemCall(SystemCall("  string", strings[0]));
        return taken;
      }};
  const ImportStub<"ClearEventLogW", decltype(ClearEventLogW)> clear{};
  const ImportStub<"DeregisterEventSource", decltype(DeregisterEventSource)> close{};

  const std::string opened = SystemCall("RegisterEventSourceW", nullptr, L"Dozewell Service");
  const Calls reported = {SystemCall("ReportEventW", kSource, EVENTLOG_INFORMATION_TYPE, 0, 0,
                                     nullptr, 1, 0, kMemory, nullptr),
                          SystemCall("  string", L"5 minutes")};
  const std::string closed = SystemCall("DeregisterEventSource", kSource);
  LogServiceEvent(L"%d minutes", 5, kEventInformation);
  CHECK(TakeSystemCalls() == Joined({{opened}, reported, {closed}}));
  taken = FALSE;
  LogServiceEvent(L"%d minutes", 5, kEventInformation);
  CHECK(TakeSystemCalls() == Joined({{opened},
                                     reported,
                                     {SystemCall("ClearEventLogW", kSource, nullptr)},
                                     reported,
                                     {closed}}));
}

}  // namespace dozewell
