#include <windows.h>

#include <memory>

#include "power/clock.h"
#include "power/failing_import.h"
#include "power/record.h"

// A test waits until the service's own threads are done; how many are not is in the machine's
// state.

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

// A thread is done when the system says so, which is somewhat later than when its procedure
// returns; until then the service takes it for running.
DWORD WINAPI AwaitEnd(void* argument) {
  const HANDLE thread = argument;
  WaitForSingleObject(thread, INFINITE);
  CloseHandle(thread);
  --Machine->busyThreads;
  return 0;
}

HANDLE WINAPI StartCountedThread(SECURITY_ATTRIBUTES* security, SIZE_T stackSize,
                                 LPTHREAD_START_ROUTINE procedure, void* argument, DWORD flags,
                                 DWORD* id);

const Import<decltype(CreateThread)> CreateThreadImport(SystemCallPlace("CreateThread"),
                                                        StartCountedThread);

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
  CloseHandle(CreateThreadImport.System(nullptr, 0, AwaitEnd, watched, 0, nullptr));
  return thread;
}

}  // namespace
}  // namespace dozewell::lab
