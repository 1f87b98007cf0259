// Clients that call the service through stubs: one for a long time, and many at once, of which some
// switch the feature on and off and others have events dispatched. The settings of the machine are
// lost:
//
//   rpc_clients_test DOZEWELLSERVICE [CLIENTS]
//   rpc_clients_test -running CLIENTS
//
// The first starts the service, without the driver, and compares what it holds before and after;
// the second has many clients at once call a service that runs.

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cwchar>
#include <limits>
#include <string>

#include "rpc/crowd.h"
#include "rpc/mixed_calls.h"
#include "rpc/observed_state.h"
#include "rpc/results.h"
#include "rpc/service_process.h"

namespace dozewell {
namespace {

constexpr int kClients = 1000;

// The rounds of one client, in parts, and the rounds between the first parts and the last. The
// stacks of the runtime's threads come and go, so the least memory that is held after any part
// counts. Some of them also stay, so a series that seems to leak is tried again: a real leak shows
// in every series. The heap grows by 64 KB.
constexpr int kWarmingRounds = 200;
constexpr int kParts = 4;
constexpr int kRoundsPerPart = 50;
constexpr int kRoundsBetween = 200;
constexpr int kSeries = 3;
constexpr size_t kSpareBytes = 128 << 10;

// What may stay held after a crowd: Wine keeps the memory of ended threads for later ones, some 80
// KB for each of those that ran at the same time.
constexpr size_t kSpareBytesPerClient = 128 << 10;

// The runtime's own threads and handles come and go.
constexpr size_t kSpare = 4;

// The runtime keeps idle threads for a while, with their stacks: under Wine for some 30 seconds.
constexpr DWORD kSettleMs = 300000;

bool HasNoneLeft(const Holdings& before, const Holdings& after) {
  return after.handles <= before.handles + kSpare && after.threads <= before.threads;
}

// What the service holds when nothing is left of its calls, or after the time that this may take.
Holdings Settled(const ServiceProcess& service, const Holdings& before) {
  const DWORD began = GetTickCount();
  Holdings held = service.Held();
  while (!HasNoneLeft(before, held) && GetTickCount() - began < kSettleMs) {
    Sleep(100);
    held = service.Held();
  }
  return held;
}

void Print(const char* when, const Holdings& held) {
  std::printf("  %s: %zu handles, %zu threads, %zu KB of memory\n", when, held.handles,
              held.threads, held.privateBytes >> 10);
  std::fflush(stdout);
}

// Each round calls all procedures, and then Ping on a new connection.
void CallAll(int rounds) {
  for (int round = 0; round < rounds; ++round) {
    for (unsigned int procedure = 0; procedure < kProcedureCount; ++procedure) {
      Expect(CallByChance(procedure, static_cast<unsigned int>(round)),
             "procedure " + std::to_string(procedure) + " answered wrongly");
    }
    ExpectPing();
  }
}

size_t Growth(size_t before, size_t after) { return after > before ? after - before : 0; }

size_t LeastHeldInParts(const ServiceProcess& service) {
  size_t least = std::numeric_limits<size_t>::max();
  for (int part = 0; part < kParts; ++part) {
    CallAll(kRoundsPerPart);
    least = std::min(least, service.Held().privateBytes);
  }
  return least;
}

size_t GrowthInSeries(const ServiceProcess& service) {
  const size_t first = LeastHeldInParts(service);
  CallAll(kRoundsBetween);
  return Growth(first, LeastHeldInParts(service));
}

void TestOneClient(const ServiceProcess& service) {
  CallAll(kWarmingRounds);
  const Holdings before = service.Held();
  Print("before", before);
  size_t growth = GrowthInSeries(service);
  for (int series = 1; growth > kSpareBytes && series < kSeries; ++series) {
    growth = GrowthInSeries(service);
  }
  const Holdings after = Settled(service, before);
  Print("after", after);
  Expect(HasNoneLeft(before, after), "handles or threads are left");
  Expect(growth <= kSpareBytes, std::to_string(growth) + " bytes are left");
}

void TestCrowd(const ServiceProcess& service, int clients) {
  const Holdings before = service.Held();
  Print("before", before);
  const DWORD began = GetTickCount();
  size_t peak = 0;
  RunCrowd(clients, 1, [&] { peak = std::max(peak, service.Handles()); });
  std::printf("  %lu ms, at most %zu handles\n", GetTickCount() - began, peak);
  const Holdings after = Settled(service, before);
  Print("after", after);
  Expect(HasNoneLeft(before, after), "handles or threads are left");
  Expect(Growth(before.privateBytes, after.privateBytes) <=
             static_cast<size_t>(clients) * kSpareBytesPerClient,
         "memory is left");
}

void TestService(Results& results, const std::wstring& program, int clients) {
  ServiceProcess service(program);
  BindToService();
  results.Run("one client's calls leave nothing behind", [&] { TestOneClient(service); });
  results.Run(std::to_string(clients) + " clients at once leave nothing behind",
              [&] { TestCrowd(service, clients); });
  results.Run("a Ping is answered", ExpectPing);
  results.Run("the service stops in good order", [&] { Expect(service.Stop(), "it does not"); });
}

int Number(const wchar_t* text) { return static_cast<int>(std::wcstol(text, nullptr, 10)); }

}  // namespace
}  // namespace dozewell

int wmain(int argc, wchar_t** argv) {
  using dozewell::Number;
  if (argc == 4 && std::wcscmp(argv[1], dozewell::kCrowdMember) == 0) {
    return dozewell::BeCrowdMember(Number(argv[2]), static_cast<unsigned int>(Number(argv[3])));
  }
  dozewell::Results results;
  if (argc == 3 && std::wcscmp(argv[1], L"-running") == 0) {
    const int clients = Number(argv[2]);
    results.Run(std::to_string(clients) + " clients at once are served",
                [&] { dozewell::RunCrowd(clients, 1, [] {}); });
    results.Run("a Ping is answered", dozewell::ExpectPing);
    return results.Finish();
  }
  results.Run("the service listens and was called", [&] {
    dozewell::Expect(argc > 1,
                     "usage: rpc_clients_test DOZEWELLSERVICE [CLIENTS] | -running CLIENTS");
    dozewell::TestService(results, argv[1], argc > 2 ? Number(argv[2]) : dozewell::kClients);
  });
  return results.Finish();
}
