#ifndef DOZEWELL_TESTS_SUPPORT_SHUTDOWN_PRIVILEGE_WINDOWS_H_
#define DOZEWELL_TESTS_SUPPORT_SHUTDOWN_PRIVILEGE_WINDOWS_H_

namespace dozewell::support {

// Whether this process has the privilege to shut down and suspend the machine, and has enabled it.
bool ShutdownPrivilegeIsEnabled();

// Enables it, or takes it back, for the whole process.
void EnableShutdownPrivilege(bool enable);

}  // namespace dozewell::support

#endif  // DOZEWELL_TESTS_SUPPORT_SHUTDOWN_PRIVILEGE_WINDOWS_H_
