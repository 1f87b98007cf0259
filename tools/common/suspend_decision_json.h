#ifndef DOZEWELL_COMMON_SUSPEND_DECISION_JSON_H_
#define DOZEWELL_COMMON_SUSPEND_DECISION_JSON_H_

#include <cstdint>
#include <optional>
#include <string>

#include "prediction/suspend_decision.h"

namespace dozewell {

// A text of the decision without the line feed that ends a time.
std::string DecisionLine(const std::wstring& text);

// The minutes after which the wake timer fires; nothing when it is not armed.
std::optional<int32_t> ArmedTimerMinutes(const SuspendDecision& decision);

// The decision as a JSON object, in which null stands for what is not set.
std::string SuspendDecisionJson(const SuspendDecision& decision);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_SUSPEND_DECISION_JSON_H_
