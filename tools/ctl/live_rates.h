#ifndef DOZEWELL_CTL_LIVE_RATES_H_
#define DOZEWELL_CTL_LIVE_RATES_H_

#include <optional>

#include "common/rates_explanation.h"
#include "prediction/configurations.h"

namespace dozewell::ctl {

// Why this machine's service, with the predictor of rates, would decide on a suspend as it does, by
// its file and by what the history file has after that. Nothing when the settings choose another
// predictor. It asks the service whether anything can wake the machine.
std::optional<RatesExplanation> ExplainLiveRates(IConfigurations& configuration, const tm& at);

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_LIVE_RATES_H_
