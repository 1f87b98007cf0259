// Compares how long a Ping takes from call to return with a call of an empty server in the same
// run: ping_bench DOZEWELLSERVICE [CALLS]. Nothing else should run on the machine. Passes when the
// ratio of the medians is at most 1.15.

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cwchar>
#include <string>
#include <vector>

#include "dozewell_rpc.h"
#include "empty_rpc.h"
#include "rpc/client_binding.h"
#include "rpc/empty_server.h"
#include "rpc/pipe_name.h"
#include "rpc/results.h"
#include "rpc/service_process.h"

namespace dozewell {
namespace {

constexpr int kCalls = 10000;
constexpr double kLargestRatio = 1.15;

// Runs this program a second time as the empty server, for the life of the object.
class EmptyServer {
 public:
  EmptyServer() {
    wchar_t program[MAX_PATH];
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    std::wstring commandLine = std::wstring(L"\"") + program + L"\" -empty";
    STARTUPINFOW startup = {};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION started = {};
    Expect(CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                          &startup, &started) != 0,
           "the empty server cannot be started");
    CloseHandle(started.hThread);
    process_ = started.hProcess;
  }
  ~EmptyServer() {
    TerminateProcess(process_, 0);
    CloseHandle(process_);
  }
  EmptyServer(const EmptyServer&) = delete;
  EmptyServer& operator=(const EmptyServer&) = delete;

 private:
  HANDLE process_;
};

void AwaitListening(void* binding) {
  const DWORD start = GetTickCount();
  while (RpcMgmtIsServerListening(binding) != RPC_S_OK) {
    Expect(GetTickCount() - start < kHangMs, "a server does not listen");
    Sleep(10);
  }
}

double Microseconds(int64_t ticks) {
  LARGE_INTEGER frequency;
  QueryPerformanceFrequency(&frequency);
  return static_cast<double>(ticks) * 1e6 / static_cast<double>(frequency.QuadPart);
}

// How long calls took, in ticks of the performance counter.
class Times {
 public:
  template <typename Procedure>
  void Add(Procedure call) {
    LARGE_INTEGER begin;
    LARGE_INTEGER end;
    QueryPerformanceCounter(&begin);
    const bool answered = call() == 1;
    QueryPerformanceCounter(&end);
    Expect(answered, "a call is refused");
    ticks_.push_back(end.QuadPart - begin.QuadPart);
  }
  double MedianMicroseconds() {
    const auto middle = ticks_.begin() + static_cast<ptrdiff_t>(ticks_.size() / 2);
    std::ranges::nth_element(ticks_, middle);
    return Microseconds(*middle);
  }

 private:
  std::vector<int64_t> ticks_;
};

void Measure(const std::wstring& program, int calls) {
  // It makes more of a difference on which processor a server is woken than everything that is to
  // be measured here.
  StayOnOneProcessor();
  const ServiceProcess service(program);
  const EmptyServer emptyServer;
  DozewellBinding = BindToPipe(kRpcEndpoint);
  EmptyBinding = BindToPipe(kEmptyPipe);
  AwaitListening(DozewellBinding);
  AwaitListening(EmptyBinding);
  Times pings;
  Times emptyCalls;
  // The two take turns, so that other work of the machine affects both alike.
  for (int call = 0; call < calls; ++call) {
    pings.Add(Call_Ping);
    emptyCalls.Add(Call_EmptyCall);
  }
  const double ping = pings.MedianMicroseconds();
  const double empty = emptyCalls.MedianMicroseconds();
  std::printf("median of %d calls: Ping %.1f us, empty server %.1f us, ratio %.3f, at most %.2f\n",
              calls, ping, empty, ping / empty, kLargestRatio);
  Expect(ping <= kLargestRatio * empty, "a Ping takes too long");
}

}  // namespace
}  // namespace dozewell

int wmain(int argc, wchar_t** argv) {
  if (argc == 2 && std::wcscmp(argv[1], L"-empty") == 0) return dozewell::ServeEmpty();
  dozewell::EndOnFailedCall();
  dozewell::Results results;
  results.Run("a Ping takes hardly longer than a call of an empty server", [&] {
    dozewell::Expect(argc > 1, "usage: ping_bench DOZEWELLSERVICE [CALLS]");
    dozewell::Measure(
        argv[1], argc > 2 ? static_cast<int>(std::wcstol(argv[2], nullptr, 10)) : dozewell::kCalls);
  });
  return results.Finish();
}
