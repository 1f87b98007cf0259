#ifndef DOZEWELL_COMMON_SUSPEND_DECISION_JSON_H_
#define DOZEWELL_COMMON_SUSPEND_DECISION_JSON_H_

#include <cstdint>
#include <optional>
#include <string>

#include "common/json.h"
#include "prediction/suspend_decision.h"

namespace dozewell {

// A text of the decision without the line feed that ends a time.
std::string DecisionLine(const std::wstring& text);

// The minutes after which the wake timer fires; nothing when it is not armed.
std::optional<int32_t> ArmedTimerMinutes(const SuspendDecision& decision);

// The decision on a suspend at `now` as a JSON object. Its times stand there twice, as the service
// writes them and as YYYY-MM-DDTHH:MM:SS. Null stands for what is not set.
Json SuspendDecisionJson(const SuspendDecision& decision, const tm& now);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_SUSPEND_DECISION_JSON_H_
