#ifndef DOZEWELL_BASE_LOCK_H_
#define DOZEWELL_BASE_LOCK_H_

#include <memory>

namespace dozewell {

// A recursive lock, for std::lock_guard.
class Lock {
 public:
  Lock();
  ~Lock();
  Lock(const Lock&) = delete;
  Lock& operator=(const Lock&) = delete;

  void lock();
  void unlock();

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

// The one process-wide lock: guards building and replacing the predictor and the history file.
extern Lock EngineLock;

}  // namespace dozewell

#endif  // DOZEWELL_BASE_LOCK_H_
