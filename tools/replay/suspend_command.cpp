#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "common/suspend_decision_json.h"
#include "replay/commands.h"
#include "replay/learnt_data.h"

namespace dozewell::replay {
namespace {

std::string MinutesText(const std::optional<int32_t>& minutes, const char* missing) {
  return minutes ? std::to_string(*minutes) + " minutes" : missing;
}

std::string Text(const SuspendDecision& decision) {
  return "Predicted Hibernate at: " + DecisionLine(decision.hibernateAt) +
         "\nPredicted Sleep restored at: " + DecisionLine(decision.sleepRestoredAt) +
         "\nPredicted Hibernate next at: " + DecisionLine(decision.hibernateNextAt) +
         "\nHibernate-after timeout: " + MinutesText(decision.haMinutes, "left as it is") +
         "\nWake timer: " + MinutesText(ArmedTimerMinutes(decision), "not armed") +
         "\nHibernate-after timeout once woken: " +
         MinutesText(decision.nextHAMinutes, "left as it is") + "\n";
}

}  // namespace

void RunSuspend(const Options& options, Results& results) {
  LearntData learnt(options, results);
  const tm now = learnt.TimeOrLastEvent("--now", options.now);
  std::vector<PredictionRecord> predictions;
  if (!learnt.IsPredictionDisabled()) predictions = learnt.Tracker().GetPredictions(now);
  const SuspendDecision decision = DecideSuspend(predictions, now);
  results.output = options.json
                       ? IdentifiedLine(SuspendDecisionJson(decision, now), results.identity)
                       : Text(decision);
}

}  // namespace dozewell::replay
