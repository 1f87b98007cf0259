#include "common/problem_place.h"

#include <doctest/doctest.h>

#include "fakes/configurations_fake.h"

namespace dozewell {
namespace {

const EngineSources kSources = {"s.ini", "d.z7"};

std::string PlaceWith(const char* key, const char* value) {
  fakes::Configurations configuration;
  configuration.values[key] = value;
  return PlaceOfProblem(configuration, kSources);
}

std::string PlaceAt(uint32_t timeResolution) {
  fakes::Configurations configuration;
  configuration.timeResolution = timeResolution;
  return PlaceOfProblem(configuration, kSources);
}

}  // namespace

TEST_CASE("a problem of the settings is at the keys that no engine can be built with") {
  CHECK(PlaceWith("DaysInCycle", "") == "s.ini: DaysInCycle is missing");
  CHECK(PlaceWith("MinutesInDay", "x0") == "s.ini: MinutesInDay is x0");
  CHECK(PlaceWith("AgregationWeight", "-1") == "s.ini: AgregationWeight is -1");
  CHECK(PlaceAt(kNoTimeResolution) == "s.ini: TimeResolution is missing");
  CHECK(PlaceAt(0) == "s.ini: TimeResolution is 0");
  CHECK(PlaceAt(static_cast<uint32_t>(-2)) == "s.ini: TimeResolution is -2");
  CHECK(PlaceAt(7) == "s.ini: TimeResolution is 7, which does not divide MinutesInDay, 1440");
  CHECK(PlaceWith("DaysInCycle", "-7") ==
        "s.ini: TimeResolution, MinutesInDay and DaysInCycle make no cycle");
}

TEST_CASE("all keys that are wrong are named") {
  fakes::Configurations configuration;
  configuration.values.clear();
  configuration.timeResolution = kNoTimeResolution;
  CHECK(PlaceOfProblem(configuration, kSources) ==
        "s.ini: TimeResolution, DaysInCycle, MinutesInDay, FirstLastWeight, SecondLastWeight, "
        "AgregationWeight are missing");
  configuration.values["DaysInCycle"] = "0";
  configuration.timeResolution = 0;
  CHECK(PlaceOfProblem(configuration, kSources) ==
        "s.ini: TimeResolution is 0, DaysInCycle is 0, MinutesInDay, FirstLastWeight, "
        "SecondLastWeight, AgregationWeight are missing");
}

TEST_CASE("with usable settings the problem is the data file's") {
  CHECK(PlaceWith("DaysInCycle", "7") == "d.z7");
}

TEST_CASE("a problem of a search is at the ranges with a weight that no set may have") {
  fakes::Configurations configuration;
  configuration.values["FirstLastWeightRange"] = "5 -1";
  configuration.values["SecondLastWeightRange"] = "5";
  CHECK(PlaceOfSearchProblem(configuration, kSources) == "s.ini: FirstLastWeightRange holds -1");
  configuration.values["FirstLastWeightRange"] = "5";
  CHECK(PlaceOfSearchProblem(configuration, kSources) == "d.z7");
}

TEST_CASE("what the engine throws comes with its place, and what it returns comes as it is") {
  const auto place = [] { return std::string("s.ini: K is missing"); };
  CHECK(TellPlace(place, [] { return 7; }) == 7);
  CHECK_THROWS_WITH_AS(
      TellPlace(place, []() -> int { throw FixedTextException("No K specified"); }),
      "s.ini: K is missing: No K specified", ToolError);
}

}  // namespace dozewell
