#include "replay/file_configurations.h"

#include <doctest/doctest.h>

#include <string>
#include <vector>

namespace dozewell::replay {
namespace {

FileConfigurations Configured(const char* text) {
  static std::vector<std::string> missing;
  return {SettingsFile(text, "s.ini"), missing};
}

}  // namespace

TEST_CASE("the predictor's values are those of its section, as they stand") {
  FileConfigurations configuration =
      Configured("[Settings]\nStrengthLow=1\n[CyclicProbabilityPredictor]\nStrengthHigh=7 0x\n");
  CHECK(configuration.GetValue(kPredictorSection, "StrengthHigh") == "7 0x");
  CHECK(configuration.GetValue(kPredictorSection, "StrengthLow").empty());
}

TEST_CASE("the time resolution is a number, absent when it is empty") {
  CHECK(Configured("[Settings]\nTimeResolution=15\n").GetTimeResolution() == 15);
  CHECK(Configured("[Settings]\nTimeResolution=15 min\n").GetTimeResolution() == 15);
  CHECK(Configured("[Settings]\nTimeResolution=x\n").GetTimeResolution() == 0);
  CHECK(Configured("[Settings]\nTimeResolution=99999999999\n").GetTimeResolution() == 2147483647);
  CHECK(Configured("[Settings]\nTimeResolution=-2\n").GetTimeResolution() == 4294967294U);
  CHECK(Configured("[Settings]\nTimeResolution=\n").GetTimeResolution() == kNoTimeResolution);
  CHECK(Configured("[CyclicProbabilityPredictor]\nTimeResolution=15\n").GetTimeResolution() ==
        kNoTimeResolution);
}

TEST_CASE("the dynamic timeout is on when its setting is 1") {
  CHECK(Configured("[Settings]\nEnableDynamicHA=1\n").IsDynamicHAEnabled());
  CHECK_FALSE(Configured("[Settings]\nEnableDynamicHA=2\n").IsDynamicHAEnabled());
  CHECK_FALSE(Configured("").IsDynamicHAEnabled());
}

TEST_CASE("predictions are disabled when their setting is 1") {
  CHECK(Configured("[Settings]\nDisablePrediction=1\n").IsPredictionDisabled());
  CHECK_FALSE(Configured("[Settings]\nDisablePrediction=2\n").IsPredictionDisabled());
  CHECK_FALSE(Configured("").IsPredictionDisabled());
}

TEST_CASE("keys that are asked for and have a default only without a file are noted once") {
  std::vector<std::string> missing;
  FileConfigurations configuration(
      SettingsFile("[CyclicProbabilityPredictor]\nDayGrouping=\n", "s.ini"), missing);
  configuration.GetValue(kPredictorSection, "DayGrouping");
  configuration.GetValue(kPredictorSection, "UseDualStrength");
  configuration.IsPredictionDisabled();
  CHECK(missing.empty());
  configuration.GetValue(kPredictorSection, "StrengthLow");
  configuration.GetValue(kPredictorSection, "StrengthLow");
  configuration.GetTimeResolution();
  CHECK(missing == std::vector<std::string>{"StrengthLow", "TimeResolution"});
}

TEST_CASE("the default settings lack nothing") {
  std::vector<std::string> missing;
  FileConfigurations configuration(LoadSettings(std::nullopt), missing);
  configuration.GetValue(kPredictorSection, "StrengthLow");
  configuration.GetTimeResolution();
  CHECK(missing.empty());
  CHECK(configuration.Name() == "default settings");
}

TEST_CASE("the data folder has a name") { CHECK(Configured("").GetDataFolder() == L"."); }

}  // namespace dozewell::replay
