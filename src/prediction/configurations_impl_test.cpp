#include "prediction/configurations_impl.h"

#include <doctest/doctest.h>

#include <stdexcept>

#include "fakes/settings_fake.h"

namespace dozewell {
namespace {

struct Listener : IConfigurationsListener {
  std::vector<std::string> heard;
  bool throws = false;

  void OnConfigurationChanged(std::string section) override {
    heard.push_back(section);
    if (throws) throw std::runtime_error("listener");
  }
};

fakes::Value& PredictorValue(fakes::Key& key, const char* name) {
  return key.predictorValues[{kPredictorSection, name}];
}

}  // namespace

TEST_CASE("a number reads as its decimal text and another type as empty") {
  fakes::ResetSettings();
  PredictorValue(fakes::settings.current, "StrengthHigh") = fakes::Number32(70);
  PredictorValue(fakes::settings.current, "StrengthLow") = fakes::Value{};
  PredictorValue(fakes::settings.defaults, "StrengthLow") = fakes::Text("30");
  PredictorValue(fakes::settings.defaults, "DaysInCycle") = fakes::Text("7");
  ConfigurationsImpl configuration;
  CHECK(configuration.GetValue(kPredictorSection, "StrengthHigh") == "70");
  CHECK(configuration.GetValue(kPredictorSection, "StrengthLow").empty());
  CHECK(configuration.GetValue(kPredictorSection, "DaysInCycle") == "7");
  CHECK(configuration.GetValue(kPredictorSection, "MinutesInDay").empty());
  CHECK(configuration.GetValue("Other", "StrengthHigh").empty());
}

TEST_CASE("the time resolution is -1 until it is configured somewhere") {
  fakes::ResetSettings();
  ConfigurationsImpl configuration;
  CHECK(configuration.GetTimeResolution() == 0xFFFFFFFF);
  fakes::settings.defaults.values[L"TimeResolution"] = fakes::Number32(10);
  CHECK(configuration.GetTimeResolution() == 10);
  fakes::settings.current.values[L"TimeResolution"] = fakes::Number32(15);
  CHECK(configuration.GetTimeResolution() == 15);
}

TEST_CASE("dynamic hibernate-after is on for the number 1 only") {
  fakes::ResetSettings();
  ConfigurationsImpl configuration;
  CHECK_FALSE(configuration.IsDynamicHAEnabled());
  fakes::settings.defaults.values[L"EnableDynamicHA"] = fakes::Number32(1);
  CHECK(configuration.IsDynamicHAEnabled());
  fakes::settings.current.values[L"EnableDynamicHA"] = fakes::Number32(2);
  CHECK_FALSE(configuration.IsDynamicHAEnabled());
}

TEST_CASE("the data folder is that of the settings") {
  fakes::ResetSettings();
  fakes::settings.dataFolder = L"D:\\Data\\";
  CHECK(ConfigurationsImpl().GetDataFolder() == L"D:\\Data\\");
}

TEST_CASE("the one listener is told of changes until it is unregistered") {
  ConfigurationsImpl configuration;
  CHECK_NOTHROW(configuration.NotifyListener("Strength"));
  Listener first;
  Listener second;
  configuration.RegisterListener(&first);
  configuration.RegisterListener(&second);
  configuration.NotifyListener("Strength");
  CHECK(first.heard.empty());
  CHECK(second.heard == std::vector<std::string>{"Strength"});
  second.throws = true;
  CHECK_THROWS_WITH_AS(configuration.NotifyListener("Strength"), "listener", std::runtime_error);
  configuration.UnregisterListener();
  CHECK_NOTHROW(configuration.NotifyListener("Strength"));
  CHECK(second.heard.size() == 2);
}

TEST_CASE("a list of numbers is split at blanks and commas") {
  struct Row {
    const char* text;
    std::vector<int32_t> numbers;
  };
  const Row rows[] = {
      {"10, 20,30", {10, 20, 30}}, {",,,", {}},  {"  ", {}},    {"", {}}, {"7", {7}},
      {" ,7, x,-3 ", {7, 0, -3}},  {"5;6", {5}}, {"1\t2", {1}},
  };
  for (const Row& row : rows) {
    fakes::ResetSettings();
    PredictorValue(fakes::settings.current, "WR") = fakes::Text(row.text);
    CAPTURE(row.text);
    CHECK(ParseIntList("WR") == row.numbers);
  }
  fakes::ResetSettings();
  CHECK(ParseIntList("WR").empty());
}

}  // namespace dozewell
