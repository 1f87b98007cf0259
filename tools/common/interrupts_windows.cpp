#include <windows.h>

#include "common/interrupts.h"

namespace dozewell {
namespace {

// The system calls the handlers of Ctrl+C and its like on a thread of their own. Ours waits for the
// lock and keeps it, so that nothing new begins while the program ends.
class HandlerLock {
 public:
  HandlerLock() {
    InitializeCriticalSection(&lock_);
    SetConsoleCtrlHandler(Handle, TRUE);
  }

  void Enter() { EnterCriticalSection(&lock_); }
  void Leave() { LeaveCriticalSection(&lock_); }

 private:
  static BOOL WINAPI Handle(DWORD);

  CRITICAL_SECTION lock_;
};

HandlerLock& TheLock() {
  static HandlerLock lock;
  return lock;
}

// The next handler ends the program.
BOOL WINAPI HandlerLock::Handle(DWORD) {
  TheLock().Enter();
  return FALSE;
}

}  // namespace

HeldInterrupts::HeldInterrupts() { TheLock().Enter(); }

HeldInterrupts::~HeldInterrupts() { TheLock().Leave(); }

}  // namespace dozewell
