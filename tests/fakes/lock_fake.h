#ifndef DOZEWELL_TESTS_FAKES_LOCK_FAKE_H_
#define DOZEWELL_TESTS_FAKES_LOCK_FAKE_H_

#include <functional>

#include "base/lock.h"

namespace dozewell::fakes {

// Locks that keep nobody out, for tests on one thread.
struct Locks {
  // Whether another thread has a lock when it is tried.
  std::function<bool(const Lock&)> isBusy = [](const Lock&) { return false; };
  // What happens when a lock is about to be taken, perhaps after a wait, and when it was freed.
  std::function<void(const Lock&)> beforeTaking = [](const Lock&) {};
  std::function<void(const Lock&)> afterFreeing = [](const Lock&) {};
};
extern Locks locks;

bool IsTaken(const Lock& lock);

// Frees all locks; nothing happens at them any more.
void ResetLocks();

}  // namespace dozewell::fakes

#endif  // DOZEWELL_TESTS_FAKES_LOCK_FAKE_H_
