#include "rpc/observed_state.h"

#include "prediction/configurations.h"
#include "rpc/calls.h"
#include "rpc/pipe.h"
#include "rpc/results.h"
#include "settings/predictor_values.h"
#include "settings/settings_store.h"

namespace dozewell {
namespace {

constexpr wchar_t kFeature[] = L"EnableZ7Feature";
constexpr char kStrength[] = "Strength";

}  // namespace

std::string StoredStrength() { return ReadPredictorValue(kPredictorSection, kStrength); }

uint32_t StoredFeature() {
  uint32_t value = 0;
  Expect(ReadSetting(kFeature, value, /*deleteAfterRead=*/false), "the feature is not stored");
  return value;
}

void StoreUntouched() {
  WriteSetting(kFeature, kFeatureOff);
  WritePredictorValue(kPredictorSection, kStrength, "55");
}

void ResetState() {
  BoundPipe().Call(kSetFeatureEnabled, {0});
  StoreUntouched();
}

void ExpectUntouched() {
  Expect(StoredStrength() == "55", "the strength was set to " + StoredStrength());
  Expect(StoredFeature() == kFeatureOff,
         "the feature was set to " + std::to_string(StoredFeature()));
}

void ExpectPing() { Expect(BoundPipe().Call(kPing, {}) == Bytes{1}, "a Ping is refused"); }

}  // namespace dozewell
