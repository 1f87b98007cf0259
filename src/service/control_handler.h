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

// Passes a control of the service control manager on to the sleep controller or the RPC server, and
// sends the resulting status. `eventData` is what the system hands over with the control (a power
// setting begins with its 16-byte identifier), or null. Always 0; throws nothing. The system calls
// it for one control at a time.
uint32_t ServiceCtrlHandler(uint32_t control, uint32_t eventType, const void* eventData);

// Stops the service on the events that end a console's programs; false for all others.
bool ConsoleCtrlHandler(uint32_t type);

}  // namespace dozewell

#endif  // DOZEWELL_SERVICE_CONTROL_HANDLER_H_
