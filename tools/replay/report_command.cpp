#include <memory>
#include <optional>
#include <span>

#include "common/json.h"
#include "common/optimizer_inputs.h"
#include "common/output_file.h"
#include "common/rates_explanation.h"
#include "prediction/predictor_choice.h"
#include "prediction/rates/rates_predictor.h"
#include "replay/commands.h"
#include "replay/learnt_data.h"
#include "replay/search_habits.h"
#include "report/report.h"

namespace dozewell::replay {

namespace {

// Where the settings choose rates, what they make of the history on a machine that can be woken.
std::optional<RatesExplanation> RatesOf(IConfigurations& configuration,
                                        std::span<const HistoryRecord> history, const tm& now) {
  if (ReadPredictorChoice(configuration).kind != PredictorKind::Rates) return std::nullopt;
  const auto state = std::make_unique<RatesState>();
  CatchUp(*state, history);
  return ExplainRates(*state, WishesOf(state->learnt, ReadWeight(configuration), true), now);
}

}  // namespace

void RunReport(const Options& options, Results& results) {
  RequireNoInput(
      options.out.value(),
      {{"--history", options.history}, {"--data", options.data}, {"--settings", options.settings}});
  const auto history = LoadOptimizerHistory(options.history.value(), results.warnings);
  LearntData learnt(options, results);
  ArbitraryCycleProbabilityTracker& tracker = learnt.Tracker();
  const tm now = learnt.TimeOrLastEvent("--now", options.now);
  // The page shows the warnings too.
  const std::string page = report::MakeReport(
      {learnt.Configuration(), tracker, history, now,
       ComparedTimeoutSeconds(options.hibernateAfter), HabitsOf(learnt.Configuration()),
       results.warnings, results.identity, RatesOf(learnt.Configuration(), history, now)});
  const std::string& name = options.out.value();
  OutputFile(name).Write(page.data(), page.size());
  results.output = options.json
                       ? IdentifiedLine({{"file", name}, {"bytes", page.size()}}, results.identity)
                       : name + ": " + std::to_string(page.size()) + " bytes\n";
}

}  // namespace dozewell::replay
