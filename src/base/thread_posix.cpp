#include <pthread.h>
#include <time.h>

#include <atomic>
#include <memory>

#include "base/thread.h"

namespace dozewell {
namespace {

struct Thread {
  void (*procedure)();
  std::atomic<bool> ended{false};
};
// The thread and its handle share ownership, since either may end first.
using SharedThread = std::shared_ptr<Thread>;

void* Run(void* argument) {
  const std::unique_ptr<SharedThread> thread(static_cast<SharedThread*>(argument));
  (*thread)->procedure();
  (*thread)->ended = true;
  return nullptr;
}

}  // namespace

bool StartThread(void (*procedure)()) {
  const ThreadHandle thread = StartWatchedThread(procedure);
  CloseThread(thread);
  return thread != nullptr;
}

ThreadHandle StartWatchedThread(void (*procedure)()) {
  auto handle = std::make_unique<SharedThread>(std::make_shared<Thread>());
  (*handle)->procedure = procedure;
  auto argument = std::make_unique<SharedThread>(*handle);
  pthread_t thread{};
  if (pthread_create(&thread, nullptr, Run, argument.get()) != 0) return nullptr;
  static_cast<void>(argument.release());
  pthread_detach(thread);
  return handle.release();
}

bool IsThreadRunning(ThreadHandle thread) {
  return thread != nullptr && !(*static_cast<SharedThread*>(thread))->ended;
}

void CloseThread(ThreadHandle thread) { delete static_cast<SharedThread*>(thread); }

// Only the service, a Windows program, lowers its priority.
BackgroundPriority::BackgroundPriority() {}
BackgroundPriority::~BackgroundPriority() {}

void SleepMilliseconds(uint32_t milliseconds) {
  const timespec duration = {static_cast<time_t>(milliseconds / 1000),
                             static_cast<long>(milliseconds % 1000 * 1000000)};
  nanosleep(&duration, nullptr);
}

}  // namespace dozewell
