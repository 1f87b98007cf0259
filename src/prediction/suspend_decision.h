#ifndef DOZEWELL_PREDICTION_SUSPEND_DECISION_H_
#define DOZEWELL_PREDICTION_SUSPEND_DECISION_H_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "prediction/time_line.h"

namespace dozewell {

// What to do at a suspend. The texts follow "Predicted Hibernate at: ", "Predicted Sleep restored
// at: " and "Predicted Hibernate next at: "; a time ends with a line feed.
struct SuspendDecision {
  std::wstring hibernateAt;
  std::wstring sleepRestoredAt;
  std::wstring hibernateNextAt;
  // The hibernate-after timeout to set now. Negative when the clock jumped.
  std::optional<int32_t> haMinutes;
  // NextSleepTime: when the machine is expected to be in use and should be back in sleep.
  std::optional<tm> nextSleepTime;
  // From now until then; the wake timer is armed only when it is positive.
  std::optional<int32_t> timerMinutes;
  // NextHAMinutes: the hibernate-after timeout to set at that time.
  std::optional<int32_t> nextHAMinutes;
};

// Decides from the predictions made at `now`; none when prediction is disabled or failed.
SuspendDecision DecideSuspend(const std::vector<PredictionRecord>& predictions, const tm& now);

}  // namespace dozewell

#endif  // DOZEWELL_PREDICTION_SUSPEND_DECISION_H_
