#include <windows.h>
#include <winternl.h>

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <utility>
#include <vector>

#include "prediction/configurations.h"
#include "rpc/results.h"
#include "rpc/service_process.h"
#include "settings/predictor_values.h"
#include "settings/settings_store.h"
#include "support/registry_windows.h"

namespace dozewell {
namespace {

constexpr char kListening[] = "RPC server is listening...";

void ProvisionPredictor() {
  support::DeleteTree(L"SOFTWARE\\Corisk");
  const std::pair<const char*, const char*> values[] = {
      {"DaysInCycle", "7"},       {"MinutesInDay", "1440"},   {"FirstLastWeight", "20"},
      {"SecondLastWeight", "20"}, {"AgregationWeight", "60"}, {"StrengthHigh", "50"},
      {"StrengthLow", "30"},
  };
  for (const auto& [name, text] : values) WritePredictorValue(kPredictorSection, name, text);
  WriteSetting(L"TimeResolution", 10);
  WriteSetting(L"EnableZ7Feature", 0);
}

void Require(bool succeeded, const char* call) {
  if (!succeeded) {
    throw std::runtime_error(std::string(call) + " failed: " + std::to_string(GetLastError()));
  }
}

constexpr NTSTATUS kMoreSpaceNeeded = static_cast<NTSTATUS>(0xC0000004);

// The kinds of information about all processes and about all handles. The system's headers leave
// the second out.
constexpr ULONG kProcesses = SystemProcessInformation;
constexpr ULONG kHandles = 64;
struct HandleEntry {
  void* object;
  uintptr_t process;
  uintptr_t handle;
  ULONG access;
  USHORT creator;
  USHORT type;
  ULONG attributes;
  ULONG reserved;
};
struct HandleTable {
  uintptr_t count;
  uintptr_t reserved;
  HandleEntry entries[1];
};

std::vector<uint64_t> SystemInformation(ULONG kind) {
  using Query = NTSTATUS(WINAPI*)(ULONG kind, void* buffer, ULONG size, ULONG* needed);
  const auto query = reinterpret_cast<Query>(reinterpret_cast<void*>(NtQuerySystemInformation));
  std::vector<uint64_t> buffer(1 << 14);
  NTSTATUS status = 0;
  while ((status = query(kind, buffer.data(), static_cast<ULONG>(buffer.size() * sizeof(uint64_t)),
                         nullptr)) == kMoreSpaceNeeded) {
    buffer.resize(buffer.size() * 2);
  }
  if (status != 0) throw std::runtime_error("the system does not tell of its processes");
  return buffer;
}

size_t CountHandles(uint32_t id) {
  const std::vector<uint64_t> information = SystemInformation(kHandles);
  const auto* const table = reinterpret_cast<const HandleTable*>(information.data());
  return static_cast<size_t>(
      std::count_if(table->entries, table->entries + table->count,
                    [&](const HandleEntry& entry) { return entry.process == id; }));
}

size_t CountThreads(uint32_t id) {
  const std::vector<uint64_t> information = SystemInformation(kProcesses);
  const auto* entry = reinterpret_cast<const char*>(information.data());
  SYSTEM_PROCESS_INFORMATION process = {};
  do {
    entry += process.NextEntryOffset;
    std::memcpy(&process, entry, sizeof(process));
    if (reinterpret_cast<uintptr_t>(process.UniqueProcessId) == id) return process.NumberOfThreads;
  } while (process.NextEntryOffset != 0);
  return 0;
}

size_t CountPrivateBytes(HANDLE process) {
  size_t bytes = 0;
  const uint8_t* address = nullptr;
  MEMORY_BASIC_INFORMATION region = {};
  while (VirtualQueryEx(process, address, &region, sizeof(region)) != 0) {
    if (region.State == MEM_COMMIT && region.Type == MEM_PRIVATE) bytes += region.RegionSize;
    address = static_cast<const uint8_t*>(region.BaseAddress) + region.RegionSize;
  }
  return bytes;
}

}  // namespace

void StayOnOneProcessor() {
  Require(SetProcessAffinityMask(GetCurrentProcess(), 1) != 0, "SetProcessAffinityMask");
}

ServiceProcess::ServiceProcess(const std::wstring& program) {
  ProvisionPredictor();
  SECURITY_ATTRIBUTES inherited = {sizeof(inherited), nullptr, TRUE};
  HANDLE readEnd = nullptr;
  HANDLE writeEnd = nullptr;
  Require(CreatePipe(&readEnd, &writeEnd, &inherited, 0) != 0, "CreatePipe");
  output_.reset(readEnd);
  const SystemHandle serviceOutput(writeEnd);
  SetHandleInformation(readEnd, HANDLE_FLAG_INHERIT, 0);

  STARTUPINFOW startup = {};
  startup.cb = sizeof(startup);
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = writeEnd;
  std::wstring commandLine = L"\"" + program + L"\" -local";
  PROCESS_INFORMATION started = {};
  Require(CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, TRUE, CREATE_NO_WINDOW,
                         nullptr, nullptr, &startup, &started) != 0,
          "CreateProcessW");
  CloseHandle(started.hThread);
  process_.reset(started.hProcess);
  id_ = started.dwProcessId;
  AwaitListening();
}

ServiceProcess::~ServiceProcess() {
  if (!Runs()) return;
  TerminateProcess(process_.get(), 1);
  WaitForSingleObject(process_.get(), kHangMs);
}

void ServiceProcess::AwaitListening() {
  const DWORD start = GetTickCount();
  std::string text;
  while (text.find(kListening) == std::string::npos) {
    if (!Runs() || GetTickCount() - start > kHangMs) {
      throw std::runtime_error("the service does not listen");
    }
    char buffer[256];
    DWORD available = 0;
    if (PeekNamedPipe(output_.get(), buffer, sizeof(buffer), nullptr, &available, nullptr) &&
        available != 0) {
      DWORD read = 0;
      ReadFile(output_.get(), buffer, sizeof(buffer), &read, nullptr);
      text.append(buffer, read);
    } else {
      Sleep(10);
    }
  }
}

bool ServiceProcess::Runs() const {
  return process_ != nullptr && WaitForSingleObject(process_.get(), 0) == WAIT_TIMEOUT;
}

Holdings ServiceProcess::Held() const {
  return {Handles(), CountThreads(id_), CountPrivateBytes(process_.get())};
}

size_t ServiceProcess::Handles() const { return CountHandles(id_); }

bool ServiceProcess::Stop() {
  // Ctrl+C reaches all programs of a console, so this program joins the service's and ignores it
  // itself.
  FreeConsole();
  if (AttachConsole(id_)) {
    SetConsoleCtrlHandler(nullptr, TRUE);
    GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0);
  }
  DWORD exitCode = 1;
  const bool ended = WaitForSingleObject(process_.get(), kHangMs) == WAIT_OBJECT_0 &&
                     GetExitCodeProcess(process_.get(), &exitCode) != 0;
  FreeConsole();
  AttachConsole(ATTACH_PARENT_PROCESS);
  return ended && exitCode == 0;
}

}  // namespace dozewell
