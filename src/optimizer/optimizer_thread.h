#ifndef DOZEWELL_OPTIMIZER_OPTIMIZER_THREAD_H_
#define DOZEWELL_OPTIMIZER_OPTIMIZER_THREAD_H_

#include "base/thread.h"

namespace dozewell {

// The optimizer's one thread, which searches for better parameters when a run is due. Both
// functions may be called on any thread and wait for no event.

// The thread that was started last. Guarded by a lock of its own.
inline ThreadHandle OptimizerThreadHandle = kNoThread;

// Starts the thread unless it is still alive. The thread itself decides whether a run is due.
void LaunchOptimizerThread();

// Asks a live thread to end its run, without waiting for it.
void TerminateOptimizerThread();

}  // namespace dozewell

#endif  // DOZEWELL_OPTIMIZER_OPTIMIZER_THREAD_H_
