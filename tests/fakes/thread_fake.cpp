#include "fakes/thread_fake.h"

#include <algorithm>
#include <bit>
#include <utility>

#include "fakes/journal.h"

namespace dozewell {

using fakes::threads;

fakes::Threads fakes::threads;

void fakes::Threads::Run() {
  for (void (*const procedure)() : std::exchange(waiting, {})) procedure();
  running.clear();
}

bool StartThread(void (*procedure)()) {
  fakes::journal.emplace_back("thread: start");
  if (threads.failer.Fails()) return false;
  if (threads.atOnce) {
    procedure();
  } else {
    threads.waiting.push_back(procedure);
  }
  return true;
}

ThreadHandle StartWatchedThread(void (*procedure)()) {
  if (!StartThread(procedure)) return nullptr;
  const auto handle = std::bit_cast<ThreadHandle>(++threads.watched);
  if (!threads.atOnce) threads.running.push_back(handle);
  return handle;
}

bool IsThreadRunning(ThreadHandle thread) {
  return std::ranges::find(threads.running, thread) != threads.running.end();
}

void CloseThread(ThreadHandle) { fakes::journal.emplace_back("thread: close"); }

BackgroundPriority::BackgroundPriority() { threads.inBackground = true; }
BackgroundPriority::~BackgroundPriority() { threads.inBackground = false; }

void SleepMilliseconds(uint32_t milliseconds) {
  threads.sleeps.push_back(milliseconds);
  threads.whileSleeping();
}

}  // namespace dozewell
