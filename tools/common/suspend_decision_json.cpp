#include "common/suspend_decision_json.h"

#include "base/numbers.h"
#include "base/utf8.h"
#include "common/local_time.h"

namespace dozewell {
namespace {

// When so many minutes have passed since a time; null unless both are known.
Json TimeLaterJson(const std::optional<tm>& time, const std::optional<int32_t>& minutes) {
  if (!time || !minutes) return nullptr;
  tm later = *time;
  AddSecondsToTime(&later, Wrap32(int64_t{*minutes} * 60));
  return FormatLocalTime(later);
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

Json SuspendDecisionJson(const SuspendDecision& decision, const tm& now) {
  return {{"hibernateAt", DecisionLine(decision.hibernateAt)},
          {"sleepRestoredAt", DecisionLine(decision.sleepRestoredAt)},
          {"hibernateNextAt", DecisionLine(decision.hibernateNextAt)},
          {"haMinutes", OptionalJson(decision.haMinutes)},
          {"timerMinutes", OptionalJson(ArmedTimerMinutes(decision))},
          {"nextHAMinutes", OptionalJson(decision.nextHAMinutes)},
          {"hibernateAtTime", TimeLaterJson(now, decision.haMinutes)},
          {"sleepRestoredAtTime", TimeLaterJson(decision.nextSleepTime, 0)},
          {"hibernateNextAtTime", TimeLaterJson(decision.nextSleepTime, decision.nextHAMinutes)}};
}

}  // namespace dozewell
