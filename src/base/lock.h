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

// Guards replacing the predictor, and the history file. Files are read and written under it.
extern Lock& EngineLock;

// Keeps events apart from each other, and from starting and stopping the controller; guards all
// that they work on. Taken where an event enters. A suspend takes it too, so under it nobody waits
// for a file, a search or a client. In particular nobody waits for EngineLock under it except the
// control handler's thread, which is the one that a suspend comes on. A thread that needs both
// takes them with std::scoped_lock, which waits for neither while it holds the other.
extern Lock& ControllerLock;

// The order in which a thread may wait for locks: StatusLock (service_status.h), the one for
// clients (procedures.cpp), the one for starts (controller.cpp), ControllerLock, EngineLock. Under
// the locks of the pending history (history_recorder.cpp), of the optimizer's thread
// (optimizer_thread.cpp), of the time zone (system_zone_windows.cpp), of the right to suspend
// (suspend_windows.cpp) and of the timer in the driver's place (timer_device.cpp) no other lock is
// taken.

}  // namespace dozewell

#endif  // DOZEWELL_BASE_LOCK_H_
