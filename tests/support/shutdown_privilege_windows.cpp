#include "support/shutdown_privilege_windows.h"

#include <windows.h>

#include <cstring>
#include <vector>

namespace dozewell::support {
namespace {

LUID PrivilegeId() {
  LUID id = {};
  LookupPrivilegeValueW(nullptr, SE_SHUTDOWN_NAME, &id);
  return id;
}

HANDLE OpenOwnToken(DWORD access) {
  HANDLE token = nullptr;
  OpenProcessToken(GetCurrentProcess(), access, &token);
  return token;
}

}  // namespace

bool ShutdownPrivilegeIsEnabled() {
  const HANDLE token = OpenOwnToken(TOKEN_QUERY);
  DWORD size = 0;
  GetTokenInformation(token, TokenPrivileges, nullptr, 0, &size);
  std::vector<BYTE> memory(size);
  const bool isRead = GetTokenInformation(token, TokenPrivileges, memory.data(), size, &size) != 0;
  CloseHandle(token);
  if (!isRead) return false;
  const LUID id = PrivilegeId();
  const auto& privileges = *reinterpret_cast<const TOKEN_PRIVILEGES*>(memory.data());
  for (DWORD i = 0; i < privileges.PrivilegeCount; ++i) {
    const LUID_AND_ATTRIBUTES& privilege = privileges.Privileges[i];
    if (std::memcmp(&privilege.Luid, &id, sizeof(id)) == 0) {
      return (privilege.Attributes & SE_PRIVILEGE_ENABLED) != 0;
    }
  }
  return false;
}

void EnableShutdownPrivilege(bool enable) {
  TOKEN_PRIVILEGES wanted = {};
  wanted.PrivilegeCount = 1;
  wanted.Privileges[0] = {PrivilegeId(), enable ? SE_PRIVILEGE_ENABLED : DWORD{0}};
  const HANDLE token = OpenOwnToken(TOKEN_ADJUST_PRIVILEGES);
  AdjustTokenPrivileges(token, FALSE, &wanted, 0, nullptr, nullptr);
  CloseHandle(token);
}

}  // namespace dozewell::support
