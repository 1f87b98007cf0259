#include <windows.h>

#include <atomic>
#include <cstdio>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "base/system_handle.h"
#include "rpc/crowd.h"
#include "rpc/mixed_calls.h"
#include "rpc/results.h"
#include "support/parallel.h"

namespace dozewell {
namespace {

constexpr int kProcesses = 10;
constexpr DWORD kLongestMs = 300000;
constexpr DWORD kBetweenLooksMs = 100;

constexpr wchar_t kStartEvent[] = L"DozewellClientsStart";
constexpr wchar_t kReadySemaphore[] = L"DozewellClientsReady";

// What the clients of one process share.
struct Member {
  SystemHandle ready;
  SystemHandle start;
  unsigned int seed = 0;
  std::atomic<int> wrongAnswers = 0;
};
Member& member = *new Member;

void BeClient(int number) {
  const auto first = static_cast<unsigned int>(number);
  std::minstd_rand random(member.seed + first);
  ReleaseSemaphore(member.ready.get(), 1, nullptr);
  WaitForSingleObject(member.start.get(), INFINITE);
  for (unsigned int call = 0; call < kProcedureCount; ++call) {
    const unsigned int procedure = (first + call) % kProcedureCount;
    if (!CallByChance(procedure, static_cast<unsigned int>(random()))) {
      std::printf("procedure %u answered wrongly\n", procedure);
      ++member.wrongAnswers;
    }
  }
}

SystemHandle StartMember(int clients, unsigned int seed) {
  wchar_t program[MAX_PATH];
  GetModuleFileNameW(nullptr, program, MAX_PATH);
  std::wstring commandLine = std::wstring(L"\"") + program + L"\" " + kCrowdMember + L" " +
                             std::to_wstring(clients) + L" " + std::to_wstring(seed);
  STARTUPINFOW startup = {};
  startup.cb = sizeof(startup);
  PROCESS_INFORMATION started = {};
  Expect(CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &startup, &started) != 0,
         "clients cannot be started");
  CloseHandle(started.hThread);
  return SystemHandle(started.hProcess);
}

}  // namespace

void RunCrowd(int clients, unsigned int seed, const std::function<void()>& meanwhile) {
  const SystemHandle start(CreateEventW(nullptr, TRUE, FALSE, kStartEvent));
  const SystemHandle ready(CreateSemaphoreW(nullptr, 0, clients, kReadySemaphore));
  std::vector<SystemHandle> processes;
  processes.reserve(kProcesses);
  const int each = clients / kProcesses;
  for (int i = 0; i < kProcesses; ++i) {
    processes.push_back(StartMember(each, seed + static_cast<unsigned int>(i * each)));
  }
  for (int i = 0; i < each * kProcesses; ++i) {
    Expect(WaitForSingleObject(ready.get(), kLongestMs) == WAIT_OBJECT_0,
           "a client does not start");
  }
  SetEvent(start.get());
  const DWORD began = GetTickCount();
  for (const SystemHandle& process : processes) {
    while (WaitForSingleObject(process.get(), kBetweenLooksMs) == WAIT_TIMEOUT) {
      Expect(GetTickCount() - began < kLongestMs, "clients are not served in time");
      meanwhile();
    }
    DWORD exitCode = 1;
    GetExitCodeProcess(process.get(), &exitCode);
    Expect(exitCode == 0, "clients ended with " + std::to_string(exitCode));
  }
}

int BeCrowdMember(int clients, unsigned int seed) {
  BindToService();
  member.ready.reset(OpenSemaphoreW(SEMAPHORE_MODIFY_STATE, FALSE, kReadySemaphore));
  member.start.reset(OpenEventW(SYNCHRONIZE, FALSE, kStartEvent));
  member.seed = seed;
  RunInParallel(clients, BeClient);
  return member.wrongAnswers == 0 ? 0 : 1;
}

}  // namespace dozewell
