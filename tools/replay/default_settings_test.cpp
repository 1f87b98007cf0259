#include <doctest/doctest.h>

#include <string>

#include "fakes/event_log_fake.h"
#include "fakes/settings_fake.h"
#include "optimizer/apply_best_set.h"
#include "optimizer/best_set.h"
#include "replay/settings_file.h"
#include "settings/predictor_values.h"
#include "settings/setting_names.h"
#include "settings/settings_store.h"

namespace dozewell::replay {
namespace {

// A machine with the predictor's default settings, on which nothing was searched for.
void Provision() {
  fakes::ResetSettings();
  fakes::eventLog = {};
  const SettingsFile defaults(kDefaultSettings, "the defaults");
  auto& values = fakes::settings.defaults.predictorValues;
  const auto copy = [&](const std::string& name) {
    if (!defaults.Has(kPredictorSection, name)) return;
    values[{kPredictorSection, name}] = fakes::Text(defaults.Value(kPredictorSection, name));
  };
  for (const char* const name : kBestSetParameters) copy(name);
  for (size_t strength = 0; strength < 5; ++strength) copy(BestSetName(strength));
  copy(kStrengthName);
}

std::string LiveParameters() {
  std::string text;
  for (const char* const name : kBestSetParameters) {
    if (!text.empty()) text += ',';
    text += ReadPredictorValue(kPredictorSection, name);
  }
  return text;
}

// What a client's choice of a strength leads to.
std::string LiveParametersAt(int strength) {
  WritePredictorValue(kPredictorSection, kStrengthName, std::to_string(strength));
  ApplyBestPredictorParameters();
  uint32_t disabled = 1;
  CHECK(ReadSetting(kDisablePredictionName, disabled, /*deleteAfterRead=*/false));
  CHECK(disabled == 0);
  return LiveParameters();
}

}  // namespace

TEST_CASE(
    "before any search each strength has parameters of its own, whichever was chosen before") {
  Provision();
  const std::string balanced = "45,45,10,20,20,12";
  CHECK(LiveParameters() == balanced);
  const std::string savesMostPower = "45,45,10,100,100,12";
  const std::string savesPower = "45,45,10,50,50,12";
  const std::string expected[] = {savesMostPower, savesPower, balanced, balanced, balanced};
  for (const int strength : {0, 1, 2, 3, 4, 3, 2, 1, 0, 4, 0}) {
    CAPTURE(strength);
    CHECK(LiveParametersAt(strength) == expected[strength]);
  }
}

}  // namespace dozewell::replay
