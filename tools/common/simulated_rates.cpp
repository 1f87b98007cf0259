#include "common/simulated_rates.h"

#include <memory>

#include "optimizer/simulator/simulator.h"
#include "prediction/rates/rates_predictor.h"

namespace dozewell {

SimTimeLine SimulateRates(IConfigurations& configuration, std::span<const HistoryRecord> history,
                          bool canWake) {
  const auto build = [&](IHistorian* historian) {
    return std::make_unique<RatesPredictor>(&configuration, historian, [=] { return canWake; });
  };
  return SimulatePredictor(build, history);
}

}  // namespace dozewell
