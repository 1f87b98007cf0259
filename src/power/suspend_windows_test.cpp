#include <doctest/doctest.h>
#include <windows.h>

#include "power/suspend.h"
#include "support/calls.h"
#include "support/system_calls_windows.h"

namespace dozewell {

using namespace support;

TEST_CASE("the system is sent to sleep, not forced, and may wake for events") {
  for (const BOOLEAN done : {BOOLEAN{TRUE}, BOOLEAN{FALSE}}) {
    const ImportStub<"SetSuspendState", BOOLEAN(BOOLEAN, BOOLEAN, BOOLEAN)> suspend{done};
    CHECK(SuspendSystem() == (done != FALSE));
    CHECK(TakeSystemCalls() == Calls{SystemCall("SetSuspendState", FALSE, FALSE, FALSE)});
  }
}

}  // namespace dozewell
