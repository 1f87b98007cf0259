#include "common/hours_text.h"

#include <doctest/doctest.h>

namespace dozewell {

TEST_CASE("hours have one decimal") {
  CHECK(HoursText(0) == "0.0");
  CHECK(HoursText(60) == "0.0");
  CHECK(HoursText(3600) == "1.0");
  CHECK(HoursText(74500) == "20.7");
  CHECK(HoursText(-5400) == "-1.5");
}

}  // namespace dozewell
