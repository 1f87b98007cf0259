#include <windows.h>

#include "base/thread.h"

namespace dozewell {
namespace {

DWORD WINAPI Run(void* procedure) {
  reinterpret_cast<void (*)()>(procedure)();
  return 0;
}

}  // namespace

bool StartThread(void (*procedure)()) {
  const HANDLE thread =
      CreateThread(nullptr, 0, Run, reinterpret_cast<void*>(procedure), 0, nullptr);
  if (thread == nullptr) return false;
  CloseHandle(thread);
  return true;
}

}  // namespace dozewell
