#include "common/simulated_parameters.h"

namespace dozewell {

NativeSimulatorConfigurations SimulatedParameters(IConfigurations& configuration) {
  const auto text = [&](const char* key) { return configuration.GetValue(kPredictorSection, key); };
  return {kSimulatedDataPath,       text("DaysInCycle"),      text("FirstLastWeight"),
          text("SecondLastWeight"), text("AgregationWeight"), text("StrengthHigh"),
          text("StrengthLow"),      text("DayGrouping")};
}

}  // namespace dozewell
