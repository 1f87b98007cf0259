#ifndef DOZEWELL_SERVICE_SERVICE_HOST_H_
#define DOZEWELL_SERVICE_SERVICE_HOST_H_

#include <array>
#include <cstddef>
#include <cstdint>

namespace dozewell {

// The system's side of a running service. Errors are the system's codes, 0 for success.

inline constexpr wchar_t kServiceName[] = L"DozewellService";

// Serves the process as a service until ServiceMain has returned. The main thread.
uint32_t RunServiceDispatcher();

// Has the system call ConsoleCtrlHandler, on a thread of its own, for each console event. When the
// console goes away, that thread then waits for the end of ServiceMain, for 20 seconds at most.
void InstallConsoleHandler();

// Has the system call ServiceCtrlHandler from now on, and remembers the handle that statuses are
// sent to.
uint32_t RegisterControlHandler();

struct ServiceStatusRecord {
  uint32_t state;       // kServiceRunning and its like
  uint32_t waitHintMs;  // how long the state may last
};

inline constexpr uint32_t kServiceStopped = 1;
inline constexpr uint32_t kServiceStartPending = 2;
inline constexpr uint32_t kServiceStopPending = 3;
inline constexpr uint32_t kServiceRunning = 4;
inline constexpr uint32_t kServicePaused = 7;

// Fails when no control handler was registered.
uint32_t SendServiceStatus(const ServiceStatusRecord& status);

// The power setting that tells that the system does its idle-time work:
// {515C31D8-F734-163D-A0FD-11A08C91E8F1}, as it lies in memory.
inline constexpr std::array<uint8_t, 16> kIdleBackgroundTask = {
    0xD8, 0x31, 0x5C, 0x51, 0x34, 0xF7, 0x3D, 0x16, 0xA0, 0xFD, 0x11, 0xA0, 0x8C, 0x91, 0xE8, 0xF1};

// Asks for notifications of kIdleBackgroundTask; null when that failed.
void* RegisterIdleNotification();
void UnregisterIdleNotification(void* notification);

}  // namespace dozewell

#endif  // DOZEWELL_SERVICE_SERVICE_HOST_H_
