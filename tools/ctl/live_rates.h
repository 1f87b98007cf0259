#ifndef DOZEWELL_CTL_LIVE_RATES_H_
#define DOZEWELL_CTL_LIVE_RATES_H_

#include <optional>

#include "common/rates_explanation.h"
#include "ctl/as_of.h"
#include "ctl/unsaved_learning.h"
#include "prediction/configurations.h"

namespace dozewell::ctl {

// Why this machine's service, with the predictor of rates, would decide on a suspend as it does.
struct LiveRates {
  RatesExplanation explanation;
  AsOf asOf;
  std::optional<tm> last;  // local time of the last event that counts
};

// By the service's file, by what the history file has after that, and by what the service has not
// saved yet. Nothing when the settings choose another predictor. It asks the service whether
// anything can wake the machine. Throws CommandFailure when nothing tells of any learning.
std::optional<LiveRates> ExplainLiveRates(IConfigurations& configuration,
                                          const UnsavedLearning& unsaved, const tm& at);

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_LIVE_RATES_H_
