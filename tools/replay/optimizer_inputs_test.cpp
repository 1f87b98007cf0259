#include "replay/optimizer_inputs.h"

#include <doctest/doctest.h>

#include <string>

#include "replay/file_configurations.h"
#include "replay/replay_error.h"

namespace dozewell {

TEST_CASE("a candidate has the seven texts of a configuration as they stand") {
  const char* const kKeys[] = {"DaysInCycle",      "FirstLastWeight", "SecondLastWeight",
                               "AgregationWeight", "StrengthHigh",    "StrengthLow",
                               "DayGrouping"};
  std::string text = "[Settings]\nTimeResolution=30\n[CyclicProbabilityPredictor]\n";
  for (const std::string key : kKeys) text.append(key).append("= a text for ").append(key + "\n");
  FileConfigurations configuration(SettingsFile(text + "MinutesInDay=720\n", "s.ini"));
  NativeSimulatorConfigurations parameters = SimulatedParameters(configuration);
  for (const std::string key : kKeys) {
    CHECK(parameters.GetValue(kPredictorSection, key) == "a text for " + key);
  }
  CHECK(parameters.GetValue(kPredictorSection, "MinutesInDay") == "1440");
  CHECK(parameters.GetTimeResolution() == 10);
  CHECK(parameters.GetDataFolder() == L"c:\\invalidpath:");
}

TEST_CASE("a hibernate-after timeout is 10 minutes unless one is given") {
  CHECK(HibernateAfterSeconds(std::nullopt) == 600);
  CHECK(HibernateAfterSeconds("0") == 0);
  CHECK(HibernateAfterSeconds("4294967295") == 257698037700);
  CHECK_THROWS_WITH_AS(HibernateAfterSeconds("4294967296"),
                       "--hibernate-after: not a whole number from 0 to 4294967295: 4294967296",
                       ReplayError);
}

}  // namespace dozewell
