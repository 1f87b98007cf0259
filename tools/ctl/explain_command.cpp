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

}  // namespace

void RunExplain(const Options& options, const Console& console) {
  const tm at = TimeToExplain(options.at);
  RequireReadableData();
  LiveEngine engine;
  const AsOf asOf = engine.CatchUp(ReadUnsavedLearning());
  for (const std::string& warning : engine.Warnings()) console.warn("warning: " + warning);
  if (const auto rates = ExplainLiveRates(engine.Configuration(), at)) {
    console.print(options.json ? LiveLine(RatesExplanationJson(*rates))
                               : RatesExplanationText(*rates));
    return;
  }
  const Explanation explanation = Explain(engine.Tracker(), at);
  if (!options.json) {
    console.print(AsOfText(asOf) + "\n" + ExplanationText(explanation));
    return;
  }
  Json document = ExplanationJson(explanation);
  document["asOf"] = AsOfJson(asOf);
  console.print(IdentifiedLine(document, LiveIdentity(*engine.Tracker().GetData())));
}

}  // namespace dozewell::ctl
