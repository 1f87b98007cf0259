#include <doctest/doctest.h>

#include "power/power_source.h"

namespace dozewell {

TEST_CASE("the system says whether it is on line power") {
  uint8_t status = 9;
  REQUIRE(ReadAcLineStatus(status));
  CHECK((status == kLineOffline || status == kLineOnline || status == kLineUnknown));
}

}  // namespace dozewell
