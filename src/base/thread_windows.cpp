#include <windows.h>

#include "base/thread.h"

namespace dozewell {
namespace {

DWORD WINAPI Run(void* procedure) {
  reinterpret_cast<void (*)()>(procedure)();
  return 0;
}

}  // namespace

bool StartThread(void (*procedure)()) {
  const ThreadHandle thread = StartWatchedThread(procedure);
  CloseThread(thread);
  return thread != nullptr;
}

ThreadHandle StartWatchedThread(void (*procedure)()) {
  return CreateThread(nullptr, 0, Run, reinterpret_cast<void*>(procedure), 0, nullptr);
}

bool IsThreadRunning(ThreadHandle thread) {
  DWORD exitCode = 0;
  return GetExitCodeThread(thread, &exitCode) && exitCode == STILL_ACTIVE;
}

void CloseThread(ThreadHandle thread) {
  if (thread != nullptr) CloseHandle(thread);
}

BackgroundPriority::BackgroundPriority() {
  SetThreadPriority(GetCurrentThread(), THREAD_PRIORITY_BELOW_NORMAL);
}
BackgroundPriority::~BackgroundPriority() {
  SetThreadPriority(GetCurrentThread(), THREAD_PRIORITY_NORMAL);
}

void SleepMilliseconds(uint32_t milliseconds) { Sleep(milliseconds); }

}  // namespace dozewell
