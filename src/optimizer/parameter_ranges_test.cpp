#include "optimizer/parameter_ranges.h"

#include <doctest/doctest.h>

#include <limits>
#include <string>
#include <vector>

#include "fakes/settings_fake.h"
#include "optimizer/simulator/stop_request.h"
#include "prediction/configurations_impl.h"

namespace dozewell {
namespace {

using fakes::settings;

void SetRange(const std::string& name, const std::string& text) {
  settings.current.predictorValues[{kPredictorSection, name}] = fakes::Text(text);
}

std::vector<ParameterSet> SetsOf(const ParameterGrid& grid) {
  std::vector<ParameterSet> sets;
  for (uint64_t i = 0; i < grid.Size(); ++i) sets.push_back(grid.SetAt(i));
  return sets;
}

}  // namespace

TEST_CASE("the ranges are read in their order, and a missing one is empty") {
  fakes::ResetSettings();
  SetRange("StrengthHighRange", "60, 70,80");
  SetRange("StrengthLowRange", " ,30,,x 20z -5 ");
  SetRange("FirstLastWeightRange", "10");
  SetRange("DayGroupingRange", "0 12 0");
  ConfigurationsImpl configuration;
  const ParameterRanges ranges = ReadParameterRanges(configuration);
  CHECK(ranges.strengthHigh == std::vector{60, 70, 80});
  CHECK(ranges.strengthLow == std::vector{30, 0, 20, -5});
  CHECK(ranges.firstLastWeight == std::vector{10});
  CHECK(ranges.secondLastWeight.empty());
  CHECK(ranges.dayGrouping == std::vector{0, 12, 0});
  const std::string read = "ReadPredictorValue CyclicProbabilityPredictor ";
  CHECK(settings.calls ==
        std::vector<std::string>{read + "StrengthHighRange", read + "StrengthLowRange",
                                 read + "FirstLastWeightRange", read + "SecondLastWeightRange",
                                 read + "DayGroupingRange"});
}

TEST_CASE("the grid nests high, low, first weight, second weight and day grouping") {
  const ParameterGrid grid = BuildParameterGrid({{70, 60}, {65, 50}, {10, 20}, {30, 40}, {0, 12}});
  CHECK(SetsOf(grid) ==
        std::vector<ParameterSet>{{{70, 65}, {10, 30, 60}, 0}, {{70, 65}, {10, 30, 60}, 12},
                                  {{70, 65}, {10, 40, 50}, 0}, {{70, 65}, {10, 40, 50}, 12},
                                  {{70, 65}, {20, 30, 50}, 0}, {{70, 65}, {20, 30, 50}, 12},
                                  {{70, 65}, {20, 40, 40}, 0}, {{70, 65}, {20, 40, 40}, 12},
                                  {{70, 50}, {10, 30, 60}, 0}, {{70, 50}, {10, 30, 60}, 12},
                                  {{70, 50}, {10, 40, 50}, 0}, {{70, 50}, {10, 40, 50}, 12},
                                  {{70, 50}, {20, 30, 50}, 0}, {{70, 50}, {20, 30, 50}, 12},
                                  {{70, 50}, {20, 40, 40}, 0}, {{70, 50}, {20, 40, 40}, 12},
                                  {{60, 50}, {10, 30, 60}, 0}, {{60, 50}, {10, 30, 60}, 12},
                                  {{60, 50}, {10, 40, 50}, 0}, {{60, 50}, {10, 40, 50}, 12},
                                  {{60, 50}, {20, 30, 50}, 0}, {{60, 50}, {20, 30, 50}, 12},
                                  {{60, 50}, {20, 40, 40}, 0}, {{60, 50}, {20, 40, 40}, 12}});
}

TEST_CASE("equal thresholds make a pair, and duplicates stay") {
  const ParameterGrid grid = BuildParameterGrid({{50, 50}, {50, 51, 50}, {10}, {10}, {0, 0}});
  CHECK(grid.strengths == std::vector<StrengthPair>(4, {50, 50}));
  CHECK(grid.Size() == 8);
}

TEST_CASE("the third weight is the rest of 100, and a set without a rest is skipped") {
  CHECK(BuildParameterGrid({{60}, {40}, {60, 59, 61}, {40}, {0}}).weights ==
        std::vector<WeightTriple>{{59, 40, 1}});
  CHECK(BuildParameterGrid({{60}, {40}, {-20}, {-30}, {0}}).weights ==
        std::vector<WeightTriple>{{-20, -30, 150}});
  // 100 + 2^31 wraps to a negative number.
  constexpr int32_t kLowest = std::numeric_limits<int32_t>::min();
  CHECK(BuildParameterGrid({{60}, {40}, {kLowest}, {0}, {0}}).weights.empty());
}

TEST_CASE("low thresholds above every high one, or an empty range, make an empty grid") {
  CHECK(BuildParameterGrid({{50, 60}, {70, 80}, {10}, {10}, {0}}).Size() == 0);
  CHECK(BuildParameterGrid({{}, {40}, {10}, {10}, {0}}).Size() == 0);
  CHECK(BuildParameterGrid({{60}, {}, {10}, {10}, {0}}).Size() == 0);
  CHECK(BuildParameterGrid({{60}, {40}, {}, {10}, {0}}).Size() == 0);
  CHECK(BuildParameterGrid({{60}, {40}, {10}, {}, {0}}).Size() == 0);
  CHECK(BuildParameterGrid({{60}, {40}, {10}, {10}, {}}).Size() == 0);
}

TEST_CASE("a stop request leaves the grid without sets") {
  OptimizerStopRequested = true;
  CHECK(BuildParameterGrid({{60}, {40}, {10}, {10}, {0}}).Size() == 0);
  OptimizerStopRequested = false;
}

}  // namespace dozewell
