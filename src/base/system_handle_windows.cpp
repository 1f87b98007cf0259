#include <windows.h>

#include "base/system_handle.h"

namespace dozewell {

void SystemHandleCloser::operator()(void* handle) const { CloseHandle(handle); }

}  // namespace dozewell
