#include "common/simulated_parameters.h"

#include <doctest/doctest.h>

#include <string>

#include "fakes/configurations_fake.h"

namespace dozewell {

TEST_CASE("a candidate has the seven texts of a configuration as they stand") {
  const char* const kKeys[] = {"DaysInCycle",      "FirstLastWeight", "SecondLastWeight",
                               "AgregationWeight", "StrengthHigh",    "StrengthLow",
                               "DayGrouping"};
  fakes::Configurations configuration;
  for (const std::string key : kKeys) configuration.values[key] = "a text for " + key;
  configuration.values["MinutesInDay"] = "720";
  NativeSimulatorConfigurations parameters = SimulatedParameters(configuration);
  for (const std::string key : kKeys) {
    CHECK(parameters.GetValue(kPredictorSection, key) == "a text for " + key);
  }
  CHECK(parameters.GetValue(kPredictorSection, "MinutesInDay") == "1440");
  CHECK(parameters.GetTimeResolution() == 10);
  CHECK(parameters.GetDataFolder() == L"c:\\invalidpath:");
}

}  // namespace dozewell
