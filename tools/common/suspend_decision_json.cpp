#include "common/suspend_decision_json.h"

#include "base/utf8.h"
#include "common/json.h"

namespace dozewell {
namespace {

std::string NumberJson(const std::optional<int32_t>& number) {
  return OptionalJson(number, [](int32_t value) { return std::to_string(value); });
}

}  // namespace

std::string DecisionLine(const std::wstring& text) {
  std::string line = NarrowToUtf8(text);
  if (line.ends_with('\n')) line.pop_back();
  return line;
}

std::optional<int32_t> ArmedTimerMinutes(const SuspendDecision& decision) {
  // A timer of less than a minute is not armed.
  return decision.timerMinutes.value_or(0) > 0 ? decision.timerMinutes : std::nullopt;
}

std::string SuspendDecisionJson(const SuspendDecision& decision) {
  return "{\"hibernateAt\":\"" + DecisionLine(decision.hibernateAt) + "\",\"sleepRestoredAt\":\"" +
         DecisionLine(decision.sleepRestoredAt) + "\",\"hibernateNextAt\":\"" +
         DecisionLine(decision.hibernateNextAt) +
         "\",\"haMinutes\":" + NumberJson(decision.haMinutes) +
         ",\"timerMinutes\":" + NumberJson(ArmedTimerMinutes(decision)) +
         ",\"nextHAMinutes\":" + NumberJson(decision.nextHAMinutes) + "}";
}

}  // namespace dozewell
