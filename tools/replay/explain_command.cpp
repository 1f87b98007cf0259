#include <memory>
#include <string>

#include "common/explanation.h"
#include "common/explanation_json.h"
#include "common/input_file.h"
#include "common/option_text.h"
#include "common/rates_explanation.h"
#include "common/service_file.h"
#include "common/tool_error.h"
#include "prediction/rates/rates_file.h"
#include "prediction/rates/rates_predictor.h"
#include "replay/commands.h"
#include "replay/learnt_data.h"
#include "replay/predictor_option.h"
#include "replay/taken_settings.h"

namespace dozewell::replay {
namespace {

void ExplainSlots(const Options& options, Results& results) {
  LearntData learnt(options, results);
  ArbitraryCycleProbabilityTracker& tracker = learnt.Tracker();
  const Explanation explanation = Explain(tracker, learnt.TimeOrLastEvent("--at", options.at));
  results.output = options.json ? IdentifiedLine(ExplanationJson(explanation), results.identity)
                                : ExplanationText(explanation);
}

void ExplainRatesOf(const Options& options, Results& results) {
  const std::string& name = options.data.value();
  FileConfigurations configuration = TakeSettings(options, results);
  const std::unique_ptr<RatesState> state = ReadRatesFile(ReadInput(NameThatCounts(name)));
  if (!state) throw ToolError(name + ": is not a file of rates (rates.z7), or it is damaged");
  tm last;
  const bool hasEvent = TmFromSeconds(state->newest, last);
  if (hasEvent) results.identity.time = last;
  if (!options.at && !hasEvent) {
    throw ToolError(name + ": holds no event whose time could be taken; give --at");
  }
  const tm at = options.at ? ParseTimeOption("--at", *options.at) : last;
  const RatesExplanation explanation =
      ExplainRates(*state, WishesOf(state->learnt, ReadWeight(configuration), !options.noWake), at);
  results.output = options.json
                       ? IdentifiedLine(RatesExplanationJson(explanation), results.identity)
                       : RatesExplanationText(explanation);
}

}  // namespace

void RunExplain(const Options& options, Results& results) {
  (IsOfRates(options) ? ExplainRatesOf : ExplainSlots)(options, results);
}

}  // namespace dozewell::replay
