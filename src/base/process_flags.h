#ifndef DOZEWELL_BASE_PROCESS_FLAGS_H_
#define DOZEWELL_BASE_PROCESS_FLAGS_H_

#include <atomic>

#include "base/wall_clock.h"

namespace dozewell {

// The service's process-wide state. Flags are read and set on any thread.

// The settings "EnableZ7Feature" and "DebugLogging" as they were when the service started.
inline std::atomic<bool> FeatureEnabled{false};
inline std::atomic<bool> DebugLogging{false};

// Whether the sleep controller is built and running.
inline std::atomic<bool> ControllerStarted{false};

// Whether a thread that starts the sleep controller is on its way.
inline std::atomic<bool> ControllerStarting{false};

// Local time of the controller's start or of the last daily save. Under ControllerLock.
inline tm LastSaveTime = {};

}  // namespace dozewell

#endif  // DOZEWELL_BASE_PROCESS_FLAGS_H_
