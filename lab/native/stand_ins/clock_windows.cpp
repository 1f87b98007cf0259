#include <stdlib.h>
#include <time.h>
#include <windows.h>

#include <list>
#include <string>

#include "stand_ins/clock.h"
#include "stand_ins/import.h"
#include "stand_ins/service_record.h"

namespace dozewell::lab {
namespace {

constexpr uint64_t kForever = ~uint64_t{0};
constexpr int64_t kTicksPerSecond = 10000000;
constexpr int64_t kSecondsFrom1601To1970 = 11644473600;

struct Sleeper {
  uint64_t end;  // by MachineState::awakeMs
  bool counted;  // among the busy threads, when awake
  bool awake = false;
};

SRWLOCK SleepersLock = SRWLOCK_INIT;
CONDITION_VARIABLE SleepersChanged = CONDITION_VARIABLE_INIT;
std::list<Sleeper*> Sleepers;

thread_local bool ThisThreadIsCounted = false;

// The clock stands still until the test moves it, so a sleep can only end then.
void SleepUntil(uint64_t end) {
  AcquireSRWLockExclusive(&SleepersLock);
  if (Machine->awakeMs < end) {
    Sleeper sleeper = {end, ThisThreadIsCounted};
    Sleepers.push_back(&sleeper);
    if (sleeper.counted) --Machine->busyThreads;
    while (!sleeper.awake) {
      SleepConditionVariableSRW(&SleepersChanged, &SleepersLock, INFINITE, 0);
    }
    Sleepers.remove(&sleeper);
  }
  ReleaseSRWLockExclusive(&SleepersLock);
}

__time64_t GetTime(__time64_t* time);
void ReadZone();
void WINAPI GetFileTime(FILETIME* time);
ULONGLONG WINAPI GetUptime();
void WINAPI SleepAsTheClockSays(DWORD milliseconds);

const Import<decltype(_time64)> TimeImport(SystemCallPlace("_time64"), GetTime);
const Import<decltype(_tzset)> ZoneImport(SystemCallPlace("_tzset"), ReadZone);
const Import<decltype(GetSystemTimeAsFileTime)> FileTimeImport(
    SystemCallPlace("GetSystemTimeAsFileTime"), GetFileTime);
const Import<decltype(GetTickCount64)> UptimeImport(SystemCallPlace("GetTickCount64"), GetUptime);
const Import<decltype(Sleep)> SleepImport(SystemCallPlace("Sleep"), SleepAsTheClockSays);

__time64_t GetTime(__time64_t* time) {
  const __time64_t now = TimeImport.CountCall() != 0 ? -1 : Machine->clock.load();
  if (time != nullptr) *time = now;
  return now;
}

// The runtime takes the zone from TZ if the program has that, here as on Windows, and else from the
// system, for which the machine's zone stands in.
void ReadZone() {
  static_cast<void>(ZoneImport.CountCall());
  const char* const own = getenv("TZ");
  if (own != nullptr && *own != '\0') {
    ZoneImport.System();
    return;
  }
  // With its first conversion Wine's runtime reads Wine's own zone, which must be over by then.
  const __time64_t any = 0;
  static_cast<void>(_localtime64(&any));
  _putenv(("TZ=" + std::string(Machine->zone)).c_str());
  ZoneImport.System();
  _putenv("TZ=");
}

void WINAPI GetFileTime(FILETIME* time) {
  static_cast<void>(FileTimeImport.CountCall());
  const int64_t ticks = (Machine->clock + kSecondsFrom1601To1970) * kTicksPerSecond;
  time->dwLowDateTime = static_cast<DWORD>(ticks);
  time->dwHighDateTime = static_cast<DWORD>(ticks >> 32);
}

ULONGLONG WINAPI GetUptime() {
  static_cast<void>(UptimeImport.CountCall());
  return Machine->uptimeMs;
}

void WINAPI SleepAsTheClockSays(DWORD milliseconds) {
  static_cast<void>(SleepImport.CountCall());
  Record("sleep", Format("%lu ms", milliseconds));
  SleepUntil(milliseconds == INFINITE ? kForever : Machine->awakeMs + milliseconds);
}

}  // namespace

void WakeSleepers() {
  AcquireSRWLockExclusive(&SleepersLock);
  for (Sleeper* const sleeper : Sleepers) {
    if (sleeper->awake || Machine->awakeMs < sleeper->end) continue;
    sleeper->awake = true;
    if (sleeper->counted) ++Machine->busyThreads;
  }
  ReleaseSRWLockExclusive(&SleepersLock);
  WakeAllConditionVariable(&SleepersChanged);
}

void CountThreadAsBusy() { ThisThreadIsCounted = true; }

}  // namespace dozewell::lab
