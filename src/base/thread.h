#ifndef DOZEWELL_BASE_THREAD_H_
#define DOZEWELL_BASE_THREAD_H_

#include <bit>
#include <cstdint>

namespace dozewell {

// Threads of default stack size. A procedure must not throw. Any thread may call these functions.

// Runs the procedure on a thread that nobody can wait for. False when no thread could be created.
bool StartThread(void (*procedure)());

// A thread that can be asked whether it still runs; null when it could not be created.
using ThreadHandle = void*;

// No thread at all: the system's INVALID_HANDLE_VALUE.
inline ThreadHandle const kNoThread = std::bit_cast<void*>(UINTPTR_MAX);

// The caller gives the handle back to CloseThread, which does not end the thread.
ThreadHandle StartWatchedThread(void (*procedure)());
bool IsThreadRunning(ThreadHandle thread);
void CloseThread(ThreadHandle thread);

// Lowers the thread's priority while this object lives. Never together with a lock: threads of
// normal priority that want it would have to wait for this one.
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
