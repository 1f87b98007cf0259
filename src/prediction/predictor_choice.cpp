#include "prediction/predictor_choice.h"

#include <string>

#include "settings/setting_names.h"

namespace dozewell {

PredictorChoice ReadPredictorChoice(IConfigurations& configuration) {
  const std::string name = configuration.GetValue(kPredictorSection, kPredictorName);
  if (name == kRatesPredictor) return {PredictorKind::Rates, true};
  return {PredictorKind::Slots, name.empty() || name == kSlotsPredictor};
}

}  // namespace dozewell
