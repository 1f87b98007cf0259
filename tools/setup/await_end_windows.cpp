#include <windows.h>
// After windows.h, which it needs.
#include <tlhelp32.h>

#include <cwchar>
#include <vector>

#include "base/utf8.h"
#include "common/system_handle.h"
#include "setup/system_error.h"
#include "setup/system_steps.h"

namespace dozewell::setup {
namespace {

constexpr uint32_t kLongestWaitMs = 30'000;

std::vector<DWORD> ProcessesOf(const wchar_t* program) {
  std::vector<DWORD> found;
  const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
  if (snapshot == INVALID_HANDLE_VALUE) {
    throw SystemError("the processes cannot be listed", GetLastError());
  }
  const SystemHandle owner(snapshot);
  PROCESSENTRY32W process = {};
  process.dwSize = sizeof(process);
  for (BOOL more = Process32FirstW(snapshot, &process); more != 0;
       more = Process32NextW(snapshot, &process)) {
    if (_wcsicmp(process.szExeFile, program) == 0) found.push_back(process.th32ProcessID);
  }
  return found;
}

}  // namespace

void AwaitEndOf(const wchar_t* program, uint32_t milliseconds) {
  for (const DWORD id : ProcessesOf(program)) {
    const SystemHandle process(OpenProcess(SYNCHRONIZE, FALSE, id));
    // A process that cannot be opened has ended meanwhile.
    if (process != nullptr && WaitForSingleObject(process.get(), milliseconds) != WAIT_OBJECT_0) {
      throw SystemError(NarrowToUtf8(program) + " still runs", WAIT_TIMEOUT);
    }
  }
}

void AwaitServiceEnd() { AwaitEndOf(L"DozewellService.exe", kLongestWaitMs); }

}  // namespace dozewell::setup
