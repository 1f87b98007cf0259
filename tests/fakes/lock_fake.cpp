#include "fakes/lock_fake.h"

#include <map>

namespace dozewell {
namespace {

// How often each lock was taken and not freed again.
std::map<const Lock*, int>& Depths() {
  static std::map<const Lock*, int> depths;
  return depths;
}

}  // namespace

struct Lock::Impl {};

Lock::Lock() = default;
Lock::~Lock() = default;

void Lock::lock() {
  if (++Depths()[this] == 1 && fakes::otherThreads.lock == this) fakes::otherThreads.before();
}

void Lock::unlock() {
  if (--Depths()[this] == 0 && fakes::otherThreads.lock == this) fakes::otherThreads.after();
}

fakes::OtherThreads fakes::otherThreads;

bool fakes::IsTaken(const Lock& lock) { return Depths()[&lock] != 0; }

void fakes::ResetLocks() {
  Depths().clear();
  otherThreads = {};
}

}  // namespace dozewell
