#include <windows.h>
// After windows.h, which it needs.
#include <tlhelp32.h>

#include <string>
#include <vector>

#include "base/system_handle.h"
#include "base/utf8.h"
#include "setup/deadline.h"
#include "setup/own_service.h"
#include "setup/service_command.h"
#include "setup/system_error.h"
#include "setup/system_steps.h"

namespace dozewell::setup {
namespace {

constexpr uint32_t kLongestWaitMs = 30'000;

SystemHandle Open(DWORD process, DWORD access) {
  return SystemHandle(process == 0 ? nullptr : OpenProcess(access, FALSE, process));
}

// The process that the service control manager knows, for waiting; null when it knows none or that
// one has ended.
SystemHandle ProcessOf(void* service) {
  SERVICE_STATUS_PROCESS status = {};
  DWORD size = 0;
  if (QueryServiceStatusEx(static_cast<SC_HANDLE>(service), SC_STATUS_PROCESS_INFO,
                           reinterpret_cast<BYTE*>(&status), sizeof(status), &size) == 0) {
    throw SystemError("the service's process cannot be asked for", GetLastError());
  }
  return Open(status.dwProcessId, SYNCHRONIZE);
}

std::vector<DWORD> AllProcesses() {
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
    found.push_back(process.th32ProcessID);
  }
  return found;
}

bool Runs(HANDLE process, const std::wstring& program) {
  constexpr DWORD kLongestPath = 32768;
  std::wstring path(kLongestPath, L'\0');
  DWORD size = kLongestPath;
  if (QueryFullProcessImageNameW(process, 0, path.data(), &size) == 0) return false;
  return CompareStringOrdinal(path.data(), static_cast<int>(size), program.c_str(),
                              static_cast<int>(program.size()), TRUE) == CSTR_EQUAL;
}

// The processes of the program at this path, for waiting. A program of the same name elsewhere,
// which anybody may run, is none of them.
std::vector<SystemHandle> ProcessesOf(const std::wstring& program) {
  std::vector<SystemHandle> found;
  for (const DWORD id : AllProcesses()) {
    SystemHandle process = Open(id, SYNCHRONIZE | PROCESS_QUERY_LIMITED_INFORMATION);
    if (process != nullptr && Runs(process.get(), program)) found.push_back(std::move(process));
  }
  return found;
}

}  // namespace

void StopService(uint32_t milliseconds) {
  const Deadline deadline(milliseconds);
  const ServiceHandle service = OpenOwnService();
  if (service == nullptr) return;
  const std::wstring program = ProgramOf(CommandOf(service.get()));
  // Opened before the stop, since the service control manager forgets it then.
  std::vector<SystemHandle> processes;
  if (SystemHandle process = ProcessOf(service.get())) processes.push_back(std::move(process));
  // A service that is stopped or stopping already refuses.
  StopExistingService(service.get());
  if (processes.empty()) processes = ProcessesOf(program);
  for (const SystemHandle& process : processes) {
    if (WaitForSingleObject(process.get(), deadline.MillisecondsLeft()) != WAIT_OBJECT_0) {
      throw SystemError(NarrowToUtf8(program) + " still runs", WAIT_TIMEOUT);
    }
  }
}

void StopService() { StopService(kLongestWaitMs); }

}  // namespace dozewell::setup
