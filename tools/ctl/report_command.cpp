#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/clock.h"
#include "base/wall_clock.h"
#include "common/json.h"
#include "common/optimizer_inputs.h"
#include "common/output_file.h"
#include "common/standard_stream.h"
#include "ctl/command_failure.h"
#include "ctl/commands.h"
#include "ctl/live_engine.h"
#include "ctl/live_files.h"
#include "ctl/live_history.h"
#include "ctl/live_identity.h"
#include "ctl/live_rates.h"
#include "ctl/live_settings.h"
#include "power/hibernate_after.h"
#include "report/report.h"

namespace dozewell::ctl {
namespace {

constexpr const char* kDefaultName = "dozewell-report.html";

// The user's own timeout for the power source that the machine runs on, or the usual one where it
// cannot be read.
int64_t LiveHibernateAfterSeconds() {
  const std::optional<uint32_t> minutes = ReadCurrentHA();
  return minutes ? *minutes * kSecondsPerMinute : ComparedTimeoutSeconds(std::nullopt);
}

}  // namespace

void RunReport(const Options& options, const Console& console) {
  const std::string name = options.out.value_or(kDefaultName);
  if (IsStandardStream(name) && options.json) {
    throw CommandFailure(ExitCode::Usage,
                         "--json prints to standard output, so the page cannot be written there");
  }
  tm now;
  if (!LocalTimeNow(now)) {
    throw CommandFailure(ExitCode::NotDone, "the clock cannot be read");
  }
  RequireNoServiceFile(name);
  // The page shows minutes, so pages of the same minute are the same.
  now.tm_sec = 0;
  RequireReadableData();
  LiveEngine engine;
  const UnsavedLearning unsaved = ReadUnsavedLearning();
  const auto rates = ExplainLiveRates(engine.Configuration(), unsaved, now);
  const AsOf asOf = engine.CatchUp(unsaved);
  std::vector<std::string> notes = engine.Warnings();
  const std::vector<HistoryRecord> history = LiveHistory(unsaved, notes);
  for (const std::string& warning : notes) console.warn("warning: " + warning);
  notes.insert(notes.begin(), AsOfText(asOf));
  const MachineIdentity identity = LiveIdentity(TimeOfLast(*engine.Tracker().GetData()));
  const std::string page =
      report::MakeReport({engine.Configuration(), engine.Tracker(), history, now,
                          LiveHibernateAfterSeconds(), ReadSearchHabits(), notes, identity,
                          rates ? std::optional(rates->explanation) : std::nullopt});
  OutputFile(name).Write(page.data(), page.size());
  if (IsStandardStream(name)) return;
  const Json document = {{"file", name}, {"bytes", page.size()}, {"asOf", AsOfJson(asOf)}};
  console.print(options.json ? IdentifiedLine(document, identity)
                             : name + ": " + std::to_string(page.size()) + " bytes\n");
}

}  // namespace dozewell::ctl
