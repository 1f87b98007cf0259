#include <optional>
#include <string>
#include <utility>

#include "base/clock.h"
#include "common/explanation.h"
#include "common/explanation_json.h"
#include "ctl/command_failure.h"
#include "ctl/commands.h"
#include "ctl/live_engine.h"
#include "ctl/live_identity.h"
#include "ctl/live_rates.h"
#include "ctl/time_argument.h"

namespace dozewell::ctl {
namespace {

tm TimeToExplain(const std::optional<std::string>& at) {
  if (at) return ParseTimeArgument("--at", *at);
  tm now;
  if (LocalTimeNow(now)) return now;
  throw CommandFailure(ExitCode::NotDone, "the clock cannot be read; give --at");
}

std::string Print(const Options& options, const std::string& text, Json document, const AsOf& asOf,
                  const std::optional<tm>& last) {
  if (!options.json) return AsOfText(asOf) + "\n" + text;
  document["asOf"] = AsOfJson(asOf);
  return IdentifiedLine(std::move(document), LiveIdentity(last));
}

}  // namespace

void RunExplain(const Options& options, const Console& console) {
  const tm at = TimeToExplain(options.at);
  RequireReadableData();
  LiveEngine engine;
  const UnsavedLearning unsaved = ReadUnsavedLearning();
  const auto rates = ExplainLiveRates(engine.Configuration(), unsaved, at);
  const std::optional<AsOf> asOf = rates ? std::nullopt : std::optional(engine.CatchUp(unsaved));
  for (const std::string& warning : engine.Warnings()) console.warn("warning: " + warning);
  if (rates) {
    console.print(Print(options, RatesExplanationText(rates->explanation),
                        RatesExplanationJson(rates->explanation), rates->asOf, rates->last));
    return;
  }
  const Explanation explanation = Explain(engine.Tracker(), at);
  console.print(Print(options, ExplanationText(explanation), ExplanationJson(explanation), *asOf,
                      TimeOfLast(*engine.Tracker().GetData())));
}

}  // namespace dozewell::ctl
