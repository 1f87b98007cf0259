#ifndef DOZEWELL_COMMON_SIMULATED_RATES_H_
#define DOZEWELL_COMMON_SIMULATED_RATES_H_

#include <span>

#include "optimizer/simulator/sim_time_line.h"
#include "prediction/configurations.h"
#include "prediction/history_file.h"

namespace dozewell {

// What becomes of a history with the rate predictor, which learns it as it goes: each sleep is
// decided from what came before it. Scoring weights and strength come from the configuration.
// Throws what SimulatePredictor throws.
SimTimeLine SimulateRates(IConfigurations& configuration, std::span<const HistoryRecord> history,
                          bool canWake);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_SIMULATED_RATES_H_
