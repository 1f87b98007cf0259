#ifndef DOZEWELL_OPTIMIZER_OPTIMIZER_THREAD_H_
#define DOZEWELL_OPTIMIZER_OPTIMIZER_THREAD_H_

#include "base/thread.h"

namespace dozewell {

// The optimizer's one thread, which searches for better parameters when that is due. Both functions
// may be called on any thread that does not hold EngineLock alone.

// The last such thread that was started, under ControllerLock.
inline ThreadHandle OptimizerThreadHandle = kNoThread;

// Starts the thread, which decides for itself whether a run is due, unless it is still alive.
void LaunchOptimizerThread();

// Asks a thread that is alive to end its run, and does not wait for it.
void TerminateOptimizerThread();

}  // namespace dozewell

#endif  // DOZEWELL_OPTIMIZER_OPTIMIZER_THREAD_H_
