#include "fakes/settings_fake.h"

#include <doctest/doctest.h>

#include <cstdint>

#include "settings/data_folder.h"
#include "settings/predictor_values.h"
#include "settings/settings_store.h"

namespace dozewell {

TEST_CASE("the settings fake reads Current, then Branding, then Default") {
  fakes::ResetSettings();
  fakes::settings.current.values[L"X"] = fakes::Number32(1);
  fakes::settings.branding.values[L"X"] = fakes::Number32(2);
  fakes::settings.defaults.values[L"X"] = fakes::Number32(3);
  uint32_t value = 9;
  CHECK(ReadSetting(L"X", value, true));
  CHECK(value == 1);
  CHECK(ReadSetting(L"X", value, false));
  CHECK(value == 2);
  fakes::settings.branding = {};
  CHECK(ReadDefaultSetting(L"X", value));
  CHECK(value == 3);
  CHECK_FALSE(BrandingPresent);
  fakes::settings.branding.values[L"X"] = fakes::Number32(2);
  CHECK(ReadDefaultSetting(L"X", value));
  CHECK(value == 3);
  CHECK_FALSE(ReadSetting(L"Y", value, false));
  CHECK_FALSE(ReadSetting(nullptr, value, false));
  CHECK(value == 3);
}

TEST_CASE("the settings fake takes values that fit, whatever their type") {
  fakes::ResetSettings();
  fakes::settings.current.values[L"short"] = {fakes::ValueType::kOther, {1, 2}};
  fakes::settings.current.values[L"long"] = fakes::Number64(5);
  fakes::settings.defaults.values[L"long"] = fakes::Number32(6);
  uint32_t value = 9;
  CHECK(ReadSetting(L"short", value, false));
  CHECK(value == 0x0201);
  CHECK(ReadSetting(L"long", value, false));
  CHECK(value == 6);
}

TEST_CASE("the settings fake keeps the last optimizer run in 64 bits, its fallbacks in 32") {
  fakes::ResetSettings();
  int64_t value = 9;
  CHECK_FALSE(ReadLastOptimizerRun(value));
  CHECK(value == 9);
  fakes::settings.defaults.values[L"LastOptimizerRun"] = fakes::Number32(0xFFFFFFFF);
  CHECK(ReadLastOptimizerRun(value));
  CHECK(value == 0xFFFFFFFF);
  CHECK(WriteLastOptimizerRun(-5));
  CHECK(ReadLastOptimizerRun(value));
  CHECK(value == -5);
}

TEST_CASE("the settings fake keeps the type of a predictor value") {
  fakes::ResetSettings();
  fakes::settings.current.predictorValues[{"S", "number"}] = fakes::Number32(7);
  fakes::settings.current.predictorValues[{"S", "big"}] = fakes::Number32(1000000000);
  fakes::settings.current.predictorValues[{"S", "other"}] = {fakes::ValueType::kOther, {1}};
  fakes::settings.defaults.predictorValues[{"S", "other"}] = fakes::Text("hidden");
  fakes::settings.defaults.predictorValues[{"S", "text"}] = fakes::Text("60");
  CHECK(ReadPredictorValue("S", "number") == "7");
  CHECK(ReadPredictorValue("S", "big") == "");
  CHECK(ReadPredictorValue("S", "other") == "");
  CHECK(ReadPredictorValue("S", "text") == "60");
  CHECK(ReadPredictorValue("S", "none") == "");
  CHECK(WritePredictorValue("S", "number", "12abc"));
  CHECK(fakes::settings.current.predictorValues[{"S", "number"}] == fakes::Number32(12));
  CHECK(WritePredictorValue("S", "text", "12abc"));
  CHECK(fakes::settings.current.predictorValues[{"S", "text"}] == fakes::Text("12abc"));
  CHECK_FALSE(WritePredictorValue("S", "other", "1"));
}

TEST_CASE("the settings fake fails the call it is told to and notes every call") {
  fakes::ResetSettings();
  fakes::settings.failer.firstFailing = 2;
  uint32_t value = 9;
  CHECK(WriteSetting(L"X", 1));
  CHECK_FALSE(WriteSetting(L"X", 2));
  CHECK(ReadSetting(L"X", value, false));
  CHECK(value == 1);
  CHECK(GetDataFolder() == L"C:\\ProgramData\\Brevan\\Z7\\");
  const std::vector<std::string> calls = {"WriteSetting X 1", "WriteSetting X 2", "ReadSetting X",
                                          "GetDataFolder"};
  CHECK(fakes::settings.calls == calls);
  CHECK(fakes::settings.failer.calls == 4);
}

}  // namespace dozewell
