#ifndef DOZEWELL_BASE_THREAD_H_
#define DOZEWELL_BASE_THREAD_H_

#include <bit>
#include <cstdint>

namespace dozewell {

// Threads of default stack size. A procedure must not throw. Any thread may call all of this.

// Runs the procedure on a thread that nobody can wait for. False when there is none to be had.
bool StartThread(void (*procedure)());

// A thread that can be asked whether it still runs. Null is one that there was none to be had for.
using ThreadHandle = void*;

// No thread at all: the system's INVALID_HANDLE_VALUE.
inline ThreadHandle const kNoThread = std::bit_cast<void*>(UINTPTR_MAX);

// The caller ends what it started with CloseThread, which does not end the thread.
ThreadHandle StartWatchedThread(void (*procedure)());
bool IsThreadRunning(ThreadHandle thread);
void CloseThread(ThreadHandle thread);

// Lets others go first while it lives; never to be held together with a lock that they may want.
class BackgroundPriority {
 public:
  BackgroundPriority();
  ~BackgroundPriority();
  BackgroundPriority(const BackgroundPriority&) = delete;
  BackgroundPriority& operator=(const BackgroundPriority&) = delete;
};

void SleepMilliseconds(uint32_t milliseconds);

}  // namespace dozewell

#endif  // DOZEWELL_BASE_THREAD_H_
