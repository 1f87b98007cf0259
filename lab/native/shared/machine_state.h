#ifndef DOZEWELL_LAB_SHARED_MACHINE_STATE_H_
#define DOZEWELL_LAB_SHARED_MACHINE_STATE_H_

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

namespace dozewell::lab {

// Everything about the machine that a test sets or looks at, in one file. The test, the agent and
// every process of the service map it, so a change holds at once, also for processes that start
// later, and it outlives them all. The test's half is machine/machine_state.py.

inline constexpr wchar_t kMachineStateFile[] = L"C:\\lab\\machine.bin";

inline constexpr size_t kPowerSources = 2;   // AC, DC
inline constexpr size_t kPowerSettings = 5;  // as in kPowerSettingTable of the power schemes
inline constexpr size_t kPowerCapabilities = 76;
inline constexpr size_t kPowerSchemes = 4;  // three that every Windows has, one of the user's own
inline constexpr size_t kMaxSystemCalls = 64;
inline constexpr size_t kRecordCapacity = 32 << 20;

struct PowerScheme {
  std::array<uint8_t, 16> id;  // as a GUID lies in memory
  // As the scheme stores them: timeouts in seconds, choices by their index.
  std::atomic<uint32_t> values[kPowerSources][kPowerSettings];
};

// One function of the system that the service calls. Calls are counted from 1, and those from
// failFrom to failTo fail with the error; none does while failFrom is 0. The thread that makes call
// number holdAt waits in it until holdAt is 0 again.
struct SystemCallState {
  char name[40];
  std::atomic<uint32_t> made;
  std::atomic<uint32_t> failFrom;
  std::atomic<uint32_t> failTo;
  std::atomic<uint32_t> error;
  std::atomic<uint32_t> holdAt;
};

struct MachineState {
  uint32_t size;  // of this structure, so that the test can see that its half agrees
  std::atomic<uint32_t> agentPort;
  std::atomic<uint32_t> servicePort;  // 0 until the service has registered its control handler
  // Threads that the service started and that are not asleep.
  std::atomic<uint32_t> busyThreads;
  std::atomic<int64_t> clock;     // seconds since 1970, UTC; moves only when a test moves it
  std::atomic<uint64_t> awakeMs;  // how long the machine has been awake
  // By the clock that counts on in sleep and hibernation: now, and when the machine last fell
  // asleep and woke.
  std::atomic<uint64_t> uptimeMs;
  std::atomic<uint64_t> lastSleepMs;
  std::atomic<uint64_t> lastWakeMs;
  // The service's waitable timer: when it is due, in seconds since 1970 (UTC), or 0; whether it was
  // asked to wake the machine, and whether the machine can be woken by it; the reason given.
  std::atomic<int64_t> timerDue;
  std::atomic<uint32_t> timerWakes;
  std::atomic<uint32_t> timerCannotWake;
  char timerReason[128];
  std::atomic<uint32_t> acLineStatus;  // 1 on mains, 0 on battery
  std::atomic<uint32_t> activeScheme;
  // The system's time zone, as the C runtime understands it: "EST5EDT".
  char zone[32];
  PowerScheme schemes[kPowerSchemes];
  // A policy decides on a setting, or on which scheme is active, when these are not 0.
  std::atomic<uint32_t> settingPolicies[kPowerSources][kPowerSettings];
  std::atomic<uint32_t> schemePolicy;
  std::array<uint8_t, kPowerCapabilities> capabilities;  // SYSTEM_POWER_CAPABILITIES
  // The service's configuration, as the client sees it, keeps no privilege but the harmless one.
  std::atomic<uint32_t> givesUpPrivileges;
  // The function of the system that fails whenever the client calls it; empty for none.
  char failsForClient[40];
  SystemCallState calls[kMaxSystemCalls];
  // What the service did, in order: lines of UTF-8 back to back. A size above the capacity tells
  // the test that lines were lost.
  std::atomic<uint32_t> recordSize;
  char record[kRecordCapacity];
};
static_assert(std::atomic<uint32_t>::is_always_lock_free &&
              std::atomic<uint64_t>::is_always_lock_free);

// Maps the file. Null, with the system's last error, when it is missing or has another size.
MachineState* MapMachineState();

}  // namespace dozewell::lab

#endif  // DOZEWELL_LAB_SHARED_MACHINE_STATE_H_
