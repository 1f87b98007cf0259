#ifndef DOZEWELL_BASE_LOCK_H_
#define DOZEWELL_BASE_LOCK_H_

#include <memory>

namespace dozewell {

// A recursive lock, for std::lock_guard and std::scoped_lock.
class Lock {
 public:
  Lock();
  ~Lock();
  Lock(const Lock&) = delete;
  Lock& operator=(const Lock&) = delete;

  void lock();
  bool try_lock();  // false, with nothing taken, when another thread has it
  void unlock();

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

// Neither is ever destroyed, as other threads may still use it while the process ends.

// Guards replacing the predictor, and the history file. Its owner may read and write files.
extern Lock& EngineLock;

// Keeps events apart from each other, and from starting and stopping the controller; guards all
// that they work on. Taken where an event enters. A suspend takes it too, so its owner never waits
// for a file, a search or a client: nobody waits for EngineLock while holding it, except for the
// control handler, whose next control comes after this one anyway. Who needs both takes them with
// std::scoped_lock, which waits for either without the other.
extern Lock& ControllerLock;

// All locks in the order in which a thread may wait for them:
//   StatusLock (service_status.h), the client's lock (procedures.cpp), the start's
//   (controller.cpp), ControllerLock, EngineLock, and innermost those that are held for a moment
//   and under which no other is taken: that of the pending history (history_recorder.cpp) and of
//   the optimizer's thread (optimizer_thread.cpp).

}  // namespace dozewell

#endif  // DOZEWELL_BASE_LOCK_H_
