#include <doctest/doctest.h>
#include <windows.h>

#include "power/power_source.h"
#include "support/calls.h"
#include "support/system_calls_windows.h"

namespace dozewell {

using namespace support;

TEST_CASE("the system says whether it is on line power") {
  uint8_t status = 9;
  REQUIRE(ReadAcLineStatus(status));
  CHECK((status == kLineOffline || status == kLineOnline || status == kLineUnknown));
}

TEST_CASE("the line's status is the system's own, and left alone when the system does not say") {
  BOOL known = TRUE;
  const ImportStub<"GetSystemPowerStatus", decltype(GetSystemPowerStatus)> get{
      [&](SYSTEM_POWER_STATUS* power) {
        *power = {0, 1, 2, 3, 4, 5};
        return known;
      }};
  uint8_t status = 9;
  CHECK(ReadAcLineStatus(status));
  CHECK(status == kLineOffline);
  known = FALSE;
  status = 9;
  CHECK_FALSE(ReadAcLineStatus(status));
  CHECK(status == 9);
  TakeSystemCalls();
}

}  // namespace dozewell
