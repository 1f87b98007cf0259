#include <mutex>

#include "base/lock.h"

namespace dozewell {

struct Lock::Impl {
  std::recursive_mutex mutex;
};

Lock::Lock() : impl_(std::make_unique<Impl>()) {}
Lock::~Lock() = default;
void Lock::lock() { impl_->mutex.lock(); }
bool Lock::try_lock() { return impl_->mutex.try_lock(); }
void Lock::unlock() { impl_->mutex.unlock(); }

}  // namespace dozewell
