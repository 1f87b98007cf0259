#include "fleet/energy.h"

#include <doctest/doctest.h>

#include "common/tool_error.h"

namespace dozewell::fleet {

TEST_CASE("Energy and money come from the hours") {
  const OutcomeSums sums = {1000 * 3600, 3000 * 3600, 0, 0};
  CHECK(EnergyRates{2, 0.5, 0.3}.KilowattHours(sums) == 3.5);
  CHECK(EnergyRates{2, 0.5, 0.5}.Cost(sums) == 1.75);
  CHECK(EnergyRates().KilowattHours(sums) == 10);
  CHECK(EnergyRates().Cost(sums) == 2);
}

TEST_CASE("Rates are numbers that are not negative") {
  CHECK(ParseRate("--price", std::nullopt, 0.25) == 0.25);
  CHECK(ParseRate("--price", "0.31", 0) == 0.31);
  CHECK(ParseRate("--price", "0", 1) == 0);
  for (const char* const text : {"", "-1", "nan", "inf", "1e5", "2 W", "1,5"}) {
    CAPTURE(text);
    CHECK_THROWS_AS(ParseRate("--price", text, 0), ToolError);
  }
}

TEST_CASE("Decimals are rounded") {
  CHECK(DecimalText(0, 2) == "0.00");
  CHECK(DecimalText(1.005, 1) == "1.0");
  CHECK(DecimalText(0.06, 1) == "0.1");
  CHECK(DecimalText(-0.06, 1) == "-0.1");
  CHECK(DecimalText(-0.04, 1) == "0.0");
  CHECK(DecimalText(1234.5, 0) == "1235");
  CHECK(DecimalText(0.000001, 6) == "0.000001");
}

}  // namespace dozewell::fleet
