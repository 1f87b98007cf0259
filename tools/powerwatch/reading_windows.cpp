#include <windows.h>
// After windows.h, which it needs.
#include <powrprof.h>

#include "powerwatch/reading.h"

namespace dozewell::powerwatch {
namespace {

constexpr uint64_t kTicksPerMs = 10'000;  // of a FILETIME and of the interrupt time
constexpr uint64_t kTicksTo1970 = 116'444'736'000'000'000;

// The system's headers lack it.
struct SystemPowerInformationRecord {
  ULONG maxIdlenessAllowed;
  ULONG idleness;
  ULONG timeRemaining;  // seconds
  UCHAR coolingMode;
};
static_assert(sizeof(SystemPowerInformationRecord) == 16);

int64_t MsSince1970(const SYSTEMTIME& time) {
  FILETIME file = {};
  if (SystemTimeToFileTime(&time, &file) == 0) return -1;
  const uint64_t ticks = (uint64_t{file.dwHighDateTime} << 32) | file.dwLowDateTime;
  return (static_cast<int64_t>(ticks) - static_cast<int64_t>(kTicksTo1970)) /
         static_cast<int64_t>(kTicksPerMs);
}

using PowerQuestion = decltype(CallNtPowerInformation)*;

// Not imported: the system would look for the library beside this program first, and anybody may
// put one of that name into the folder that an administrator installs the watch from. Null when the
// system lacks it.
PowerQuestion FindPowerQuestion() {
  const HMODULE library = LoadLibraryExW(L"powrprof.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
  if (library == nullptr) return nullptr;
  return reinterpret_cast<PowerQuestion>(
      reinterpret_cast<void*>(GetProcAddress(library, "CallNtPowerInformation")));
}

template <typename Record>
std::optional<Record> Ask(PowerQuestion question, POWER_INFORMATION_LEVEL level) {
  Record record = {};
  if (question == nullptr || question(level, nullptr, 0, &record, sizeof(record)) != 0) {
    return std::nullopt;
  }
  return record;
}

std::optional<uint64_t> InterruptTimeMs(PowerQuestion question, POWER_INFORMATION_LEVEL level) {
  const auto ticks = Ask<ULONGLONG>(question, level);
  return ticks ? std::optional<uint64_t>(*ticks / kTicksPerMs) : std::nullopt;
}

std::optional<uint64_t> AwakeMs() {
  ULONGLONG ticks = 0;
  return QueryUnbiasedInterruptTime(&ticks) != 0 ? std::optional<uint64_t>(ticks / kTicksPerMs)
                                                 : std::nullopt;
}

}  // namespace

Reading ReadNow() {
  Reading reading;
  SYSTEMTIME utc;
  SYSTEMTIME local;
  GetSystemTime(&utc);
  reading.utcMs = MsSince1970(utc);
  reading.localMs =
      SystemTimeToTzSpecificLocalTime(nullptr, &utc, &local) != 0 ? MsSince1970(local) : -1;
  reading.tickMs = GetTickCount64();
  reading.awakeMs = AwakeMs();
  // It stays loaded.
  const PowerQuestion question = FindPowerQuestion();
  reading.lastSleepMs = InterruptTimeMs(question, LastSleepTime);
  reading.lastWakeMs = InterruptTimeMs(question, LastWakeTime);
  if (const auto power = Ask<SystemPowerInformationRecord>(question, SystemPowerInformation)) {
    reading.idleLeftSeconds = power->timeRemaining;
  }
  return reading;
}

}  // namespace dozewell::powerwatch
