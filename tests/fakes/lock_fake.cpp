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
  fakes::locks.beforeTaking(*this);
  ++Depths()[this];
}

bool Lock::try_lock() {
  if (fakes::locks.isBusy(*this)) return false;
  ++Depths()[this];
  return true;
}

void Lock::unlock() {
  --Depths()[this];
  fakes::locks.afterFreeing(*this);
}

fakes::Locks fakes::locks;

bool fakes::IsTaken(const Lock& lock) { return Depths()[&lock] != 0; }

void fakes::ResetLocks() {
  Depths().clear();
  locks = {};
}

}  // namespace dozewell
