#include <doctest/doctest.h>
#include <windows.h>

#include "power/suspend.h"
#include "support/calls.h"
#include "support/shutdown_privilege_windows.h"
#include "support/system_calls_windows.h"

namespace dozewell {

using namespace support;

namespace {

using SuspendStub = ImportStub<"SetSuspendState", BOOLEAN(BOOLEAN, BOOLEAN, BOOLEAN)>;

}  // namespace

TEST_CASE("the system is sent to sleep, not forced, and may wake for events") {
  for (const BOOLEAN done : {BOOLEAN{TRUE}, BOOLEAN{FALSE}}) {
    const SuspendStub suspend{done};
    CHECK(SuspendSystem() == (done != FALSE));
    CHECK(TakeSystemCalls() == Calls{SystemCall("SetSuspendState", FALSE, FALSE, FALSE)});
  }
}

TEST_CASE("the privilege that a sleep needs is enabled for its time, and then as it was before") {
  for (const bool before : {false, true}) {
    EnableShutdownPrivilege(before);
    REQUIRE(ShutdownPrivilegeIsEnabled() == before);
    bool during = false;
    const SuspendStub suspend{[&](BOOLEAN, BOOLEAN, BOOLEAN) {
      during = ShutdownPrivilegeIsEnabled();
      return BOOLEAN{TRUE};
    }};
    SuspendSystem();
    CHECK(during);
    CHECK(ShutdownPrivilegeIsEnabled() == before);
  }
  EnableShutdownPrivilege(false);
  TakeSystemCalls();
}

TEST_CASE("a sleep that ends takes the privilege from none that is being asked for") {
  EnableShutdownPrivilege(false);
  int asked = 0;
  bool afterInner = false;
  const SuspendStub suspend{[&](BOOLEAN, BOOLEAN, BOOLEAN) {
    // The second sleep begins and ends during the first.
    if (++asked == 1) SuspendSystem();
    if (asked == 2) afterInner = ShutdownPrivilegeIsEnabled();
    return BOOLEAN{TRUE};
  }};
  SuspendSystem();
  CHECK(asked == 2);
  CHECK(afterInner);
  CHECK_FALSE(ShutdownPrivilegeIsEnabled());
  TakeSystemCalls();
}

}  // namespace dozewell
