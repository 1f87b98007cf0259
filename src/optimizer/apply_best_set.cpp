#include "optimizer/apply_best_set.h"

#include <cstddef>
#include <string>

#include "diagnostics/event_writer.h"
#include "optimizer/best_set.h"
#include "settings/predictor_values.h"
#include "settings/setting_names.h"
#include "settings/settings_store.h"

namespace dozewell {

void ApplyBestPredictorParameters() {
  const std::string index = ReadPredictorValue(kPredictorSection, kStrengthName);
  const BestSetApplication application =
      ReadBestSet(ReadPredictorValue(kPredictorSection, kBestSetPrefix + index));
  if (application.parameters) {
    for (size_t i = 0; i < kBestSetParameters.size(); ++i) {
      WritePredictorValue(kPredictorSection, kBestSetParameters[i],
                          std::to_string((*application.parameters)[i]));
    }
  }
  WriteSetting(kDisablePredictionName, application.disabled);
  WriteSetting(kServiceFeedbackName, application.feedback);
  LogServiceEvent(L"Predictor disabled %d\n", application.disabled, kEventInformation);
}

}  // namespace dozewell
