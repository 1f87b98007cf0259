#ifndef DOZEWELL_SERVICE_CONTROL_HANDLER_H_
#define DOZEWELL_SERVICE_CONTROL_HANDLER_H_

#include <cstdint>

namespace dozewell {

// Controls, power events and console events, by their numbers in the system's headers.
inline constexpr uint32_t kControlStop = 1;
inline constexpr uint32_t kControlPause = 2;
inline constexpr uint32_t kControlContinue = 3;
inline constexpr uint32_t kControlInterrogate = 4;
inline constexpr uint32_t kControlShutdown = 5;
inline constexpr uint32_t kControlPowerEvent = 13;
inline constexpr uint32_t kControlSessionChange = 14;

inline constexpr uint32_t kPowerSuspend = 4;
inline constexpr uint32_t kPowerStatusChange = 10;
inline constexpr uint32_t kPowerResumeAutomatic = 18;
inline constexpr uint32_t kPowerSettingChange = 0x8013;

// Turns a control of the service control manager into what it means for the sleep controller and
// the RPC server, and sends the status that follows from it. `eventData` is what the system hands
// over with the control (a power setting begins with its 16-byte identifier), or null. Always 0;
// throws nothing. The system calls it for one control at a time.
uint32_t ServiceCtrlHandler(uint32_t control, uint32_t eventType, const void* eventData);

// Stops the service when the console is to be left; false for events of any other kind.
bool ConsoleCtrlHandler(uint32_t type);

}  // namespace dozewell

#endif  // DOZEWELL_SERVICE_CONTROL_HANDLER_H_
