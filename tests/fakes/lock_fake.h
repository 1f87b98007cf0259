#ifndef DOZEWELL_TESTS_FAKES_LOCK_FAKE_H_
#define DOZEWELL_TESTS_FAKES_LOCK_FAKE_H_

#include "base/lock.h"

namespace dozewell::fakes {

// Locks that keep nobody out, for tests on one thread, which can ask whether one is taken.
bool IsTaken(const Lock& lock);

// Frees all of them.
void ResetLocks();

}  // namespace dozewell::fakes

#endif  // DOZEWELL_TESTS_FAKES_LOCK_FAKE_H_
