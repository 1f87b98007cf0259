// Sends valid and invalid packets to the service over its pipe and checks its answers. The settings
// of the machine are lost:
//
//   rpc_wire_test DOZEWELLSERVICE [MUTATED_PACKETS]
//   rpc_wire_test -refused
//
// The first starts the service, without the driver, and sends it everything; the second sends what
// must not be carried out to a service that runs. The settings show whether a packet was carried
// out.

#include <windows.h>

#include <cwchar>
#include <string>
#include <string_view>

#include "rpc/observed_state.h"
#include "rpc/service_process.h"
#include "rpc/wire_groups.h"

namespace dozewell {
namespace {

constexpr int kMutatedPackets = 10000;

// How many handles may be left after a burst of connections: the runtime closes them on threads of
// its own.
constexpr size_t kSpareHandles = 16;

void ExpectHandlesBack(const ServiceProcess& service, size_t before) {
  const DWORD start = GetTickCount();
  size_t now = service.Handles();
  while (now > before + kSpareHandles && GetTickCount() - start < kHangMs) {
    Sleep(50);
    now = service.Handles();
  }
  Expect(now <= before + kSpareHandles,
         std::to_string(before) + " handles before, " + std::to_string(now) + " after");
}

void TestService(Results& results, const std::wstring& program, int mutatedPackets) {
  StayOnOneProcessor();
  ServiceProcess service(program);
  TestWellFormedCalls(results);
  const size_t handles = service.Handles();
  TestRefusedCalls(results);
  TestOddCalls(results);
  TestRefusedPackets(results);
  TestOddPackets(results);
  TestMutatedPackets(results, mutatedPackets);
  results.Run("the process is the one that was started",
              [&] { Expect(service.Runs(), "it has ended"); });
  results.Run("the service has let go of all connections",
              [&] { ExpectHandlesBack(service, handles); });
  results.Run("the service stops in good order", [&] { Expect(service.Stop(), "it does not"); });
}

}  // namespace
}  // namespace dozewell

int wmain(int argc, wchar_t** argv) {
  dozewell::Results results;
  results.Run("the service listens and was sent everything", [&] {
    dozewell::Expect(argc > 1, "usage: rpc_wire_test DOZEWELLSERVICE [MUTATED_PACKETS] | -refused");
    if (argv[1] == std::wstring_view(L"-refused")) {
      dozewell::TestRefusedCalls(results);
      dozewell::TestRefusedPackets(results);
      return;
    }
    dozewell::TestService(
        results, argv[1],
        argc > 2 ? static_cast<int>(std::wcstol(argv[2], nullptr, 10)) : dozewell::kMutatedPackets);
  });
  return results.Finish();
}
