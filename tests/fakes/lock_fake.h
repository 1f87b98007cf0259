#ifndef DOZEWELL_TESTS_FAKES_LOCK_FAKE_H_
#define DOZEWELL_TESTS_FAKES_LOCK_FAKE_H_

#include <functional>

#include "base/lock.h"

namespace dozewell::fakes {

// Locks that keep nobody out, for tests on one thread, which can ask whether one is taken.
bool IsTaken(const Lock& lock);

// What other threads do to what one lock guards: as late as they can before it is taken, and as
// early as they can when it is free again.
struct OtherThreads {
  const Lock* lock = nullptr;
  std::function<void()> before = [] {};
  std::function<void()> after = [] {};
};
extern OtherThreads otherThreads;

// Frees all locks and ends the other threads.
void ResetLocks();

}  // namespace dozewell::fakes

#endif  // DOZEWELL_TESTS_FAKES_LOCK_FAKE_H_
