#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "base/wall_clock.h"
#include "common/coarse_history.h"
#include "common/embedded_settings.h"
#include "common/history_csv.h"
#include "common/history_io.h"
#include "common/option_text.h"
#include "common/output_file.h"
#include "common/standard_stream.h"
#include "ctl/command_failure.h"
#include "ctl/commands.h"
#include "ctl/live_engine.h"
#include "ctl/live_history.h"
#include "ctl/live_identity.h"
#include "ctl/require_new_file.h"
#include "ctl/settings_in_force.h"
#include "ctl/settings_text.h"

namespace dozewell::ctl {
namespace {

constexpr int64_t kMostWeeks = 2000;

int64_t WeeksToShift(const Options& options) {
  if (!options.weeks) return 0;
  if (!options.anonymous) throw CommandFailure(ExitCode::Usage, "--weeks goes with --anonymous");
  try {
    return ParseNumberOption<int64_t>("--weeks", *options.weeks, -kMostWeeks, kMostWeeks);
  } catch (const ToolError& error) {
    throw CommandFailure(ExitCode::Usage, error.what());
  }
}

// Its reader knows a CSV history by its name.
void RequireCsvName(const std::string& name, const Options& options) {
  if (!IsStandardStream(name) && !IsCsvName(name)) {
    throw CommandFailure(ExitCode::Usage, name + ": the name of a CSV history ends in .csv");
  }
  if (IsStandardStream(name) && options.json) {
    throw CommandFailure(
        ExitCode::Usage,
        "--json prints to standard output, so the history cannot be written there");
  }
}

std::vector<HistoryRecord> HistoryToExport(const Console& console) {
  std::vector<std::string> warnings;
  const UnsavedLearning unsaved = ReadUnsavedLearning();
  std::vector<HistoryRecord> history = LiveHistory(unsaved, warnings);
  if (history.empty()) {
    throw CommandFailure(
        ExitCode::NothingLearnt,
        (warnings.empty() ? "" : warnings.front() + "; ") + "there is no history to export");
  }
  for (const std::string& warning : warnings) console.warn("warning: " + warning);
  return history;
}

void RequireTimesOfTheCalendar(const std::vector<HistoryRecord>& records) {
  if (!records.empty() &&
      (records.front().time < 0 || records.back().time > static_cast<double>(kLastSecond))) {
    throw CommandFailure(ExitCode::Usage,
                         "--weeks: times before 1970 or after the year 3000 would come of it");
  }
}

}  // namespace

void RunExport(const Options& options, const Console& console) {
  const std::string& name = options.file.value();
  const int64_t weeks = WeeksToShift(options);
  RequireCsvName(name, options);
  RequireNewFile(name, options, console);
  RequireReadableData();
  const std::vector<HistoryRecord> history = HistoryToExport(console);
  const std::vector<HistoryRecord> records =
      options.anonymous ? CoarseHistory(history, weeks) : history;
  RequireTimesOfTheCalendar(records);
  MachineIdentity identity = options.anonymous ? MachineIdentity() : LiveIdentity();
  identity.time = TimeOfLast(records);
  const std::string text = EmbedSettings(SettingsFileText(ReadSettingsInForce(), identity)) +
                           FormatHistoryCsv(records, identity);
  if (IsStandardStream(name)) {
    console.print(text);
    return;
  }
  OutputFile(name).Write(text.data(), text.size());
  const size_t leftOut = history.size() - records.size();
  console.print(options.json
                    ? LiveLine({{"file", name},
                                {"bytes", text.size()},
                                {"records", records.size()},
                                {"leftOut", leftOut}})
                    : name + ": " +
                          CountText(static_cast<int64_t>(records.size()), "record", "records") +
                          ", " + std::to_string(leftOut) + " left out\n");
}

}  // namespace dozewell::ctl
