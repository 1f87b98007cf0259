#include <windows.h>

#include "base/system_handle.h"
#include "ctl/read_access.h"

namespace dozewell::ctl {

bool IsReadingDenied(const std::wstring& path) {
  const HANDLE opened = CreateFileW(path.c_str(), GENERIC_READ,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (opened == INVALID_HANDLE_VALUE) return GetLastError() == ERROR_ACCESS_DENIED;
  const SystemHandle closedAtEnd(opened);
  return false;
}

}  // namespace dozewell::ctl
