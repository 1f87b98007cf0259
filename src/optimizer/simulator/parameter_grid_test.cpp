#include "optimizer/simulator/parameter_grid.h"

#include <doctest/doctest.h>

namespace dozewell {

TEST_CASE("positions go through the day groupings first, then the weights, then the strengths") {
  const ParameterGrid grid = {{{70, 65}, {70, 50}, {60, 50}},
                              {{10, 30, 60}, {10, 40, 50}, {20, 30, 50}, {20, 40, 40}},
                              {0, 12}};
  CHECK(grid.Size() == 24);
  CHECK(grid.PositionOf(2, 3, 1) == 23);
  CHECK(grid.SetAt(grid.PositionOf(1, 2, 0)) == ParameterSet{{70, 50}, {20, 30, 50}, 0});
  CHECK(grid.SetAt(23) == ParameterSet{{60, 50}, {20, 40, 40}, 12});
}

TEST_CASE("a set is simulated as a week's cycle with its numbers as plain decimals") {
  NativeSimulatorConfigurations set = ConfigurationsOf({{90, -60}, {10, 20, 70}, 2});
  CHECK(set.GetDataFolder() == L"c:\\invalidpath:");
  CHECK(set.GetValue("", "DaysInCycle") == "7");
  CHECK(set.GetValue("", "FirstLastWeight") == "10");
  CHECK(set.GetValue("", "SecondLastWeight") == "20");
  CHECK(set.GetValue("", "AgregationWeight") == "70");
  CHECK(set.GetValue("", "StrengthHigh") == "90");
  CHECK(set.GetValue("", "StrengthLow") == "-60");
  CHECK(set.GetValue("", "DayGrouping") == "2");
}

}  // namespace dozewell
