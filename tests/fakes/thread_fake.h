#ifndef DOZEWELL_TESTS_FAKES_THREAD_FAKE_H_
#define DOZEWELL_TESTS_FAKES_THREAD_FAKE_H_

#include <cstdint>
#include <functional>
#include <vector>

#include "base/thread.h"
#include "fakes/call_failer.h"

namespace dozewell::fakes {

// Threads that were started and have not run yet.
struct Threads {
  std::vector<void (*)()> waiting;
  CallFailer failer;
  // Threads are quicker than their makers: each runs to its end before StartThread returns.
  bool atOnce = false;

  // How many watched threads were started; the handle of the n-th is n, counting from 1. A thread
  // counts as running until Run has run it.
  uintptr_t watched = 0;
  std::vector<ThreadHandle> running;
  std::vector<uint32_t> sleeps;  // milliseconds
  std::function<void()> whileSleeping = [] {};
  bool inBackground = false;  // while a BackgroundPriority lives

  // Runs them to their ends, in the order in which they were started.
  void Run();
};
extern Threads threads;

}  // namespace dozewell::fakes

#endif  // DOZEWELL_TESTS_FAKES_THREAD_FAKE_H_
