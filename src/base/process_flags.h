#ifndef DOZEWELL_BASE_PROCESS_FLAGS_H_
#define DOZEWELL_BASE_PROCESS_FLAGS_H_

#include <atomic>

#include "base/wall_clock.h"

namespace dozewell {

// What the whole process shares. Any thread reads and sets the flags.

// The settings kEnableZ7FeatureName and kDebugLoggingName as they were when the service started. A
// client that switches the feature sets the first one, too.
inline std::atomic<bool> FeatureEnabled{false};
inline std::atomic<bool> DebugLogging{false};

// Whether the sleep controller is built and running.
inline std::atomic<bool> ControllerStarted{false};

// Whether a thread that starts the sleep controller runs or is about to.
inline std::atomic<bool> ControllerStarting{false};

// Local time of the controller's start or of the last daily save. Under ControllerLock.
inline tm LastSaveTime = {};

}  // namespace dozewell

#endif  // DOZEWELL_BASE_PROCESS_FLAGS_H_
