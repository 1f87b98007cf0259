#include <doctest/doctest.h>
#include <windows.h>

#include "service/service_host.h"
#include "service/service_manager.h"
#include "setup/system_steps.h"
#include "support/system_calls_windows.h"

namespace dozewell::setup {

using namespace support;

namespace {

constexpr const char* kStillThere =
    "the service is still being deleted; close Task Manager and what else shows services, or "
    "restart Windows, and install again (error 1072)";

}  // namespace

TEST_CASE("a service that is not being deleted, or not there, is not waited for") {
  CHECK_NOTHROW(AwaitDeletion(0));
  const ServiceHandle manager = OpenManager();
  const ServiceHandle service = CreateOwnService(manager.get(), kServiceName, L"C:\\none.exe");
  CHECK_NOTHROW(AwaitDeletion(0));
  CHECK(DeleteExistingService(service.get()));
}

TEST_CASE("a service that is being deleted is waited for until nobody holds it open") {
  const ServiceHandle manager = OpenManager();
  ServiceHandle service = CreateOwnService(manager.get(), kServiceName, L"C:\\none.exe");
  REQUIRE(DeleteExistingService(service.get()));
  CHECK_THROWS_WITH(AwaitDeletion(0), kStillThere);
  int pauses = 0;
  const ImportStub<"Sleep", decltype(Sleep)> sleep{[&](DWORD milliseconds) {
    CHECK(milliseconds == 500);
    if (++pauses == 3) service.reset();
  }};
  CHECK_NOTHROW(AwaitDeletion(10'000));
  CHECK(pauses == 3);
  TakeSystemCalls();
}

}  // namespace dozewell::setup
