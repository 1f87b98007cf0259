#include "base/clock.h"
#include "common/explanation.h"
#include "common/explanation_json.h"
#include "common/local_time.h"
#include "ctl/command_failure.h"
#include "ctl/commands.h"
#include "ctl/live_engine.h"

namespace dozewell::ctl {
namespace {

tm TimeToExplain(const std::optional<std::string>& at) {
  if (at) {
    if (const auto time = ParseLooseLocalTime(*at)) return *time;
    throw CommandFailure(ExitCode::Usage, "--at: not a local time YYYY-MM-DD HH:MM: " + *at);
  }
  tm now;
  if (LocalTimeNow(now)) return now;
  throw CommandFailure(ExitCode::NotDone, "the clock cannot be read; give --at");
}

}  // namespace

void RunExplain(const Options& options, const Console& console) {
  const tm at = TimeToExplain(options.at);
  RequireReadableData();
  LiveEngine engine;
  for (const std::string& warning : engine.Warnings()) console.warn("warning: " + warning);
  const Explanation explanation = Explain(engine.Tracker(), at);
  console.print(options.json ? ExplanationJson(explanation) : ExplanationText(explanation));
}

}  // namespace dozewell::ctl
