#include "common/simulated_parameters.h"

#include "settings/setting_names.h"

namespace dozewell {

NativeSimulatorConfigurations SimulatedParameters(IConfigurations& configuration) {
  const auto text = [&](const char* key) { return configuration.GetValue(kPredictorSection, key); };
  return {kSimulatedDataPath,          text(kDaysInCycleName),      text(kFirstLastWeightName),
          text(kSecondLastWeightName), text(kAgregationWeightName), text(kStrengthHighName),
          text(kStrengthLowName),      text(kDayGroupingName)};
}

}  // namespace dozewell
