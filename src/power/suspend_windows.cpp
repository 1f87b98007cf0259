#include <windows.h>
// After windows.h, which it needs.
#include <powrprof.h>

#include <mutex>

#include "base/lock.h"
#include "power/suspend.h"

namespace dozewell {
namespace {

Lock& PrivilegeLock = *new Lock;

// The right to put the machine to sleep, which even LocalSystem has to enable first. It is enabled
// while any object of this class lives, and then left as it was found: one sleep may end while the
// next is being asked for. Without it the system refuses the sleep, so no failure is looked at.
class ShutdownPrivilege {
 public:
  ShutdownPrivilege() {
    const std::lock_guard guard(PrivilegeLock);
    if (users_++ != 0) return;
    found_ = {};
    TOKEN_PRIVILEGES enabled = {};
    enabled.PrivilegeCount = 1;
    enabled.Privileges[0].Attributes = SE_PRIVILEGE_ENABLED;
    LookupPrivilegeValueW(nullptr, SE_SHUTDOWN_NAME, &enabled.Privileges[0].Luid);
    Adjust(enabled, &found_);
  }
  ~ShutdownPrivilege() {
    const std::lock_guard guard(PrivilegeLock);
    // There is nothing to put back when it was enabled before.
    if (--users_ == 0 && found_.PrivilegeCount != 0) Adjust(found_, nullptr);
  }
  ShutdownPrivilege(const ShutdownPrivilege&) = delete;
  ShutdownPrivilege& operator=(const ShutdownPrivilege&) = delete;

 private:
  // `before` becomes what was changed, as it was.
  static void Adjust(TOKEN_PRIVILEGES& privileges, TOKEN_PRIVILEGES* before) {
    HANDLE token = nullptr;
    if (OpenProcessToken(GetCurrentProcess(), TOKEN_ADJUST_PRIVILEGES | TOKEN_QUERY, &token) == 0) {
      return;
    }
    DWORD size = sizeof(TOKEN_PRIVILEGES);
    AdjustTokenPrivileges(token, FALSE, &privileges, before == nullptr ? 0 : size, before, &size);
    CloseHandle(token);
  }

  static inline int users_ = 0;
  static inline TOKEN_PRIVILEGES found_ = {};
};

}  // namespace

bool SuspendSystem() {
  const ShutdownPrivilege privilege;
  return SetSuspendState(FALSE, FALSE, FALSE) != FALSE;
}

}  // namespace dozewell
