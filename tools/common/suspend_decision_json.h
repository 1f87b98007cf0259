#ifndef DOZEWELL_COMMON_SUSPEND_DECISION_JSON_H_
#define DOZEWELL_COMMON_SUSPEND_DECISION_JSON_H_

#include <string>

#include "prediction/suspend_decision.h"

namespace dozewell {

// A text of the decision as one line, without the line feed at the end of a time.
std::string DecisionLine(const std::wstring& text);

// The decision as a JSON object; numbers that nothing is set to are null.
std::string SuspendDecisionJson(const SuspendDecision& decision);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_SUSPEND_DECISION_JSON_H_
