#include "optimizer/simulator/native_simulator_configurations.h"

#include <doctest/doctest.h>

namespace dozewell {

TEST_CASE("a candidate answers from its texts and ignores the section") {
  NativeSimulatorConfigurations candidate(L"c:\\invalidpath:", "7", "10", "20", "70", "90", "60",
                                          "2");
  CHECK(candidate.GetValue("any", "DaysInCycle") == "7");
  CHECK(candidate.GetValue("CyclicProbabilityPredictor", "MinutesInDay") == "1440");
  CHECK(candidate.GetValue("", "FirstLastWeight") == "10");
  CHECK(candidate.GetValue("", "SecondLastWeight") == "20");
  CHECK(candidate.GetValue("", "AgregationWeight") == "70");
  CHECK(candidate.GetValue("", "Strength") == "90");
  CHECK(candidate.GetValue("", "StrengthHigh") == "90");
  CHECK(candidate.GetValue("", "StrengthLow") == "60");
  CHECK(candidate.GetValue("", "UseDualStrength") == "True");
  CHECK(candidate.GetValue("", "DayGrouping") == "2");
  CHECK(candidate.GetValue("", "WR").empty());
  CHECK(candidate.GetValue("", "").empty());
  CHECK(candidate.GetTimeResolution() == 10);
  CHECK(candidate.IsDynamicHAEnabled());
  CHECK(candidate.GetDataFolder() == L"c:\\invalidpath:");
}

TEST_CASE("a candidate without texts answers empty ones, and keeps the time resolution") {
  NativeSimulatorConfigurations candidate;
  CHECK(candidate.GetValue("", "DaysInCycle").empty());
  CHECK(candidate.GetValue("", "StrengthHigh").empty());
  CHECK(candidate.GetValue("", "MinutesInDay") == "1440");
  CHECK(candidate.GetDataFolder().empty());
  CHECK(candidate.GetTimeResolution() == 10);
}

}  // namespace dozewell
