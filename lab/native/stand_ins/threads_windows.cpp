#include <windows.h>

#include <algorithm>
#include <memory>
#include <vector>

#include "stand_ins/clock.h"
#include "stand_ins/failing_import.h"
#include "stand_ins/service_record.h"

// Counts in the machine's state how many of the threads that the service started are still busy, so
// that a test can wait for them.

namespace dozewell::lab {
namespace {

struct Work {
  LPTHREAD_START_ROUTINE procedure;
  void* argument;
};

DWORD WINAPI DoWork(void* argument) {
  const Work work = *std::unique_ptr<Work>(static_cast<Work*>(argument));
  CountThreadAsBusy();
  const DWORD result = work.procedure(work.argument);
  Record("thread", "end");
  return result;
}

HANDLE WINAPI StartCountedThread(SECURITY_ATTRIBUTES* security, SIZE_T stackSize,
                                 LPTHREAD_START_ROUTINE procedure, void* argument, DWORD flags,
                                 DWORD* id);

const Import<decltype(CreateThread)> CreateThreadImport(SystemCallPlace("CreateThread"),
                                                        StartCountedThread);

// A thread has ended when the system says so, which is somewhat later than when its procedure
// returns, and until then the service sees it running. So another thread waits for the ends.
class Watcher {
 public:
  void Watch(HANDLE thread) {
    AcquireSRWLockExclusive(&lock_);
    if (watched_.empty()) {
      watched_.push_back(CreateEventW(nullptr, FALSE, FALSE, nullptr));
      CloseHandle(CreateThreadImport.System(nullptr, 0, AwaitEnds, this, 0, nullptr));
    }
    watched_.push_back(thread);
    SetEvent(watched_.front());
    ReleaseSRWLockExclusive(&lock_);
  }

 private:
  static DWORD WINAPI AwaitEnds(void* watcher) {
    for (;;) static_cast<Watcher*>(watcher)->AwaitEnd();
  }

  void AwaitEnd() {
    AcquireSRWLockExclusive(&lock_);
    std::vector<HANDLE> handles = watched_;
    ReleaseSRWLockExclusive(&lock_);
    // Threads beyond what one wait takes are waited for when others have ended.
    handles.resize(std::min<size_t>(handles.size(), MAXIMUM_WAIT_OBJECTS));
    const DWORD place = WaitForMultipleObjects(static_cast<DWORD>(handles.size()), handles.data(),
                                               FALSE, INFINITE) -
                        WAIT_OBJECT_0;
    if (place == 0 || place >= handles.size()) return;  // there is another thread to watch
    AcquireSRWLockExclusive(&lock_);
    std::erase(watched_, handles[place]);
    ReleaseSRWLockExclusive(&lock_);
    CloseHandle(handles[place]);
    --Machine->busyThreads;
  }

  SRWLOCK lock_ = SRWLOCK_INIT;
  std::vector<HANDLE> watched_;  // the first is an event that is set for each new one
};

Watcher& EndsOfThreads() {
  static Watcher watcher;
  return watcher;
}

HANDLE WINAPI StartCountedThread(SECURITY_ATTRIBUTES* security, SIZE_T stackSize,
                                 LPTHREAD_START_ROUTINE procedure, void* argument, DWORD flags,
                                 DWORD* id) {
  if (const uint32_t error = CreateThreadImport.CountCall()) return FailureOf<HANDLE>(error);
  Record("thread", "start");
  ++Machine->busyThreads;
  auto work = std::make_unique<Work>(Work{procedure, argument});
  const HANDLE thread =
      CreateThreadImport.System(security, stackSize, DoWork, work.get(), flags, id);
  if (thread == nullptr) {
    --Machine->busyThreads;
    return nullptr;
  }
  static_cast<void>(work.release());
  HANDLE watched = nullptr;
  DuplicateHandle(GetCurrentProcess(), thread, GetCurrentProcess(), &watched, SYNCHRONIZE, FALSE,
                  0);
  EndsOfThreads().Watch(watched);
  return thread;
}

}  // namespace
}  // namespace dozewell::lab
