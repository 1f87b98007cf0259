#include <doctest/doctest.h>
#include <windows.h>

#include "powerwatch/reading.h"
// After windows.h, which it needs.
#include <powrprof.h>

#include <cstring>

#include "support/calls.h"
#include "support/system_calls_windows.h"

namespace dozewell::powerwatch {

using namespace support;

namespace {

constexpr LONG kNotSupported = static_cast<LONG>(0xC00000BB);

// A machine that last slept from its 20th to its 90th second, and may sleep in 600 seconds.
LONG WINAPI AnswerPower(POWER_INFORMATION_LEVEL level, void* input, ULONG inputSize, void* output,
                        ULONG size) {
  CHECK(input == nullptr);
  CHECK(inputSize == 0);
  if (level == SystemPowerInformation) {
    const ULONG record[] = {1, 2, 600, 0};
    CHECK(size == sizeof(record));
    std::memcpy(output, record, sizeof(record));
    return 0;
  }
  CHECK(size == sizeof(ULONGLONG));
  const ULONGLONG time = level == LastSleepTime ? 200'000'000 : 900'000'000;
  CHECK((level == LastSleepTime || level == LastWakeTime));
  std::memcpy(output, &time, sizeof(time));
  return 0;
}

LONG WINAPI RefusePower(POWER_INFORMATION_LEVEL, void*, ULONG, void*, ULONG) {
  return kNotSupported;
}

template <typename Function>
FARPROC Procedure(Function* function) {
  return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(function));
}

}  // namespace

TEST_CASE("a reading has the machine's clocks to the millisecond") {
  const ImportStub<"GetSystemTime", decltype(GetSystemTime)> utc{
      [](SYSTEMTIME* time) { *time = {2026, 11, 6, 21, 8, 5, 9, 250}; }};
  const ImportStub<"SystemTimeToTzSpecificLocalTime", decltype(SystemTimeToTzSpecificLocalTime)>
      local{[](const TIME_ZONE_INFORMATION* zone, const SYSTEMTIME* time, SYSTEMTIME* result) {
        CHECK(zone == nullptr);
        *result = *time;
        result->wHour = 9;
        return TRUE;
      }};
  const uint64_t before = GetTickCount64();
  const Reading reading = ReadNow();
  CHECK(reading.utcMs == 1'795'248'309'250);
  CHECK(reading.localMs == 1'795'248'309'250 + 3'600'000);
  CHECK(reading.tickMs >= before);
  CHECK(reading.awakeMs.has_value());
  TakeSystemCalls();
}

TEST_CASE("a reading has the system's counters of sleeps, from its own folder's library") {
  const ImportStub<"GetProcAddress", decltype(GetProcAddress)> find{
      [](HMODULE, const char*) { return Procedure(AnswerPower); }};
  const ImportStub<"LoadLibraryExW", decltype(LoadLibraryExW)> load{
      [](const wchar_t*, HANDLE, DWORD) { return GetModuleHandleW(nullptr); }};
  const Reading reading = ReadNow();
  CHECK(reading.lastSleepMs == 20'000);
  CHECK(reading.lastWakeMs == 90'000);
  CHECK(reading.idleLeftSeconds == 600);
  CHECK(TakeSystemCalls().front() ==
        SystemCall("LoadLibraryExW", L"powrprof.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32));
}

TEST_CASE("counters that the system does not give stay empty") {
  const ImportStub<"GetProcAddress", decltype(GetProcAddress)> find{
      [](HMODULE, const char*) { return Procedure(RefusePower); }};
  Reading reading = ReadNow();
  CHECK_FALSE(reading.lastSleepMs.has_value());
  CHECK_FALSE(reading.lastWakeMs.has_value());
  CHECK_FALSE(reading.idleLeftSeconds.has_value());
  const ImportStub<"LoadLibraryExW", decltype(LoadLibraryExW)> load;
  reading = ReadNow();
  CHECK_FALSE(reading.lastSleepMs.has_value());
  TakeSystemCalls();
}

}  // namespace dozewell::powerwatch
