#include <doctest/doctest.h>
#include <windows.h>

#include <string>

#include "base/utf8.h"
#include "service/service_host.h"
#include "service/service_manager.h"
#include "setup/service_command.h"
#include "setup/system_steps.h"
#include "support/access_rights_windows.h"
#include "support/system_calls_windows.h"

namespace dozewell::setup {

using namespace support;

namespace {

// A new service with this command line, which is deleted at the end.
class NewService {
 public:
  explicit NewService(const wchar_t* command)
      : manager_(OpenManager()), service_(CreateOwnService(manager_.get(), kServiceName, command)) {
    REQUIRE(service_ != nullptr);
  }
  ~NewService() { CHECK(DeleteExistingService(service_.get())); }
  NewService(const NewService&) = delete;
  NewService& operator=(const NewService&) = delete;

  std::string Command() const { return NarrowToUtf8(CommandOf(service_.get())); }

 private:
  const ServiceHandle manager_;
  const ServiceHandle service_;
};

}  // namespace

TEST_CASE("a service that is not installed cannot be configured") {
  CHECK_THROWS_WITH(ConfigureService(), "the service cannot be opened (error 1060)");
}

TEST_CASE("the path of an installed service gets quotation marks, once") {
  const NewService service(L"C:\\a b\\none.exe");
  ConfigureService();
  CHECK(service.Command() == "\"C:\\a b\\none.exe\"");
  ConfigureService();
  CHECK(service.Command() == "\"C:\\a b\\none.exe\"");
}

TEST_CASE("an installed service is closed to user-defined controls of signed-in users") {
  const NewService service(L"C:\\none.exe");
  std::string access;
  SECURITY_INFORMATION what = 0;
  const ImportStub<"SetServiceObjectSecurity", decltype(SetServiceObjectSecurity)> set{
      [&](SC_HANDLE, SECURITY_INFORMATION information, PSECURITY_DESCRIPTOR descriptor) {
        what = information;
        access = AccessText(descriptor, information);
        return TRUE;
      }};
  ConfigureService();
  TakeSystemCalls();
  CHECK(what == DACL_SECURITY_INFORMATION);
  // CR would be the right to send user-defined controls.
  CHECK(access ==
        "D:(A;;CCLCSWRPWPDTLOCRRC;;;SY)(A;;CCDCLCSWRPWPDTLOCRSDRCWDWO;;;BA)(A;;CCLCSWLORC;;;IU)"
        "(A;;CCLCSWLORC;;;SU)");
}

TEST_CASE("a service whose rights cannot be set is reported") {
  const NewService service(L"C:\\none.exe");
  const ImportStub<"SetServiceObjectSecurity", decltype(SetServiceObjectSecurity)> set{
      [](SC_HANDLE, SECURITY_INFORMATION, PSECURITY_DESCRIPTOR) {
        SetLastError(ERROR_ACCESS_DENIED);
        return FALSE;
      }};
  CHECK_THROWS_WITH(ConfigureService(), "the service's access rights cannot be set (error 5)");
  TakeSystemCalls();
}

}  // namespace dozewell::setup
