#ifndef DOZEWELL_TESTS_FAKES_THREAD_FAKE_H_
#define DOZEWELL_TESTS_FAKES_THREAD_FAKE_H_

#include <vector>

#include "fakes/call_failer.h"

namespace dozewell::fakes {

// Threads that were started and have not run yet.
struct Threads {
  std::vector<void (*)()> waiting;
  CallFailer failer;
  // Threads are quicker than their makers: each runs to its end before StartThread returns.
  bool atOnce = false;

  // Runs them to their ends, in the order in which they were started.
  void Run();
};
extern Threads threads;

}  // namespace dozewell::fakes

#endif  // DOZEWELL_TESTS_FAKES_THREAD_FAKE_H_
