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

// Neither is ever destroyed, as other threads may still use it while the process ends.

// Guards building and replacing the predictor, and the history file.
extern Lock& EngineLock;

// Keeps events apart from each other, and from starting and stopping the controller; guards all
// that they work on. Taken where an event enters, always before EngineLock and never while holding
// it. Nobody waits or sleeps under it.
extern Lock& ControllerLock;

}  // namespace dozewell

#endif  // DOZEWELL_BASE_LOCK_H_
