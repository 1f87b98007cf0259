#include <doctest/doctest.h>

#include "service/service_host.h"
#include "service/service_manager.h"
#include "setup/system_steps.h"

namespace dozewell::setup {

TEST_CASE("a service that is not installed cannot be configured") {
  CHECK_THROWS_WITH(ConfigureService(), "the service cannot be opened (error 1060)");
}

TEST_CASE("an installed service is configured") {
  const ServiceHandle manager = OpenManager();
  REQUIRE(manager != nullptr);
  const ServiceHandle service = CreateOwnService(manager.get(), kServiceName, L"C:\\none.exe");
  REQUIRE(service != nullptr);
  CHECK_NOTHROW(ConfigureService());
  CHECK(DeleteExistingService(service.get()));
}

}  // namespace dozewell::setup
