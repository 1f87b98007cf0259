#ifndef DOZEWELL_SERVICE_SERVICE_STATUS_H_
#define DOZEWELL_SERVICE_SERVICE_STATUS_H_

#include <cstdint>

#include "base/lock.h"

namespace dozewell {

// What the service control manager is told about the service. Any thread.

// Held by the control handler from its entry to its return, and here while a status is sent: the
// states that the main routine goes through follow those of a control that is being handled. Taken
// before every other lock. Never destroyed.
extern Lock& StatusLock;

// Sets the state to be sent and how long it may last. Sends nothing.
void SetServiceState(uint32_t state, uint32_t waitHintMs);
void SetServiceState(uint32_t state);  // keeps the wait hint

// Sends the state; a failure is reported with `failureText` and the system's error code.
void ReportServiceStatus(const wchar_t* failureText);

}  // namespace dozewell

#endif  // DOZEWELL_SERVICE_SERVICE_STATUS_H_
