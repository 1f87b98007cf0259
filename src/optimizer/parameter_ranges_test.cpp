#include "optimizer/parameter_ranges.h"

#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "fakes/settings_fake.h"
#include "prediction/configurations_impl.h"

namespace dozewell {
namespace {

using fakes::settings;

void SetRange(const std::string& name, const std::string& text) {
  settings.current.predictorValues[{kPredictorSection, name}] = fakes::Text(text);
}

}  // namespace

TEST_CASE("the ranges are read in their order, a missing one as empty") {
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

}  // namespace dozewell
