#include <windows.h>

#include "base/lock.h"

namespace dozewell {

struct Lock::Impl {
  Impl() { InitializeCriticalSection(&section); }
  ~Impl() { DeleteCriticalSection(&section); }
  Impl(const Impl&) = delete;
  Impl& operator=(const Impl&) = delete;

  CRITICAL_SECTION section;
};

Lock::Lock() : impl_(std::make_unique<Impl>()) {}
Lock::~Lock() = default;
void Lock::lock() { EnterCriticalSection(&impl_->section); }
bool Lock::try_lock() { return TryEnterCriticalSection(&impl_->section) != 0; }
void Lock::unlock() { LeaveCriticalSection(&impl_->section); }

}  // namespace dozewell
