#include <optional>
#include <string>

#include "common/history_io.h"
#include "common/input_file.h"
#include "common/learning.h"
#include "common/option_text.h"
#include "common/problem_place.h"
#include "event_log/event_log_file.h"
#include "event_log/zone_rules.h"
#include "import/event_log_import.h"
#include "replay/commands.h"
#include "replay/file_configurations.h"
#include "replay/saved_text.h"

namespace dozewell::replay {
namespace {

void ImportCsv(const Options& options, Results& results) {
  if (!options.history) throw ToolError("--history is required");
  for (const auto& [option, isGiven] : {std::pair("--zone", options.zone.has_value()),
                                        {"--data", options.data.has_value()},
                                        {"--settings", options.settings.has_value()}}) {
    if (isGiven) throw ToolError(std::string(option) + " requires --from-event-log");
  }
  const auto records = WholeRecords(LoadCsvHistory(*options.history).bytes);
  SaveDatHistory(options.out.value(), records);
  results.output = SavedText(options, records.size());
}

LocalClock ClockOf(const std::optional<std::string>& zone) {
  if (!zone) return SystemClock();
  const auto rules = ZoneRules::Parse(*zone);
  if (!rules) {
    throw ToolError(
        WrongValue("--zone", "a zone's rules as UTC0 or CET-1CEST,M3.5.0,M10.5.0/3", *zone));
  }
  return [rules](int64_t utcSeconds) { return rules->WallSeconds(utcSeconds); };
}

// Learns the history that will be saved, unless the data file exists.
std::optional<Learning> LearnIfNew(const Options& options, const History& history,
                                   Results& results) {
  if (!options.data) {
    if (options.settings) throw ToolError("--settings requires --data");
    return std::nullopt;
  }
  if (ReadInputIfExists(*options.data)) return std::nullopt;
  FileConfigurations configuration(LoadSettings(options.settings), results.missingSettings);
  const auto place = [&] {
    return PlaceOfProblem(configuration, {configuration.Name(), *options.data});
  };
  return TellPlace(place, [&] {
    return std::optional<Learning>(std::in_place, history, configuration, *options.data,
                                   results.warnings);
  });
}

void ImportEventLog(const Options& options, Results& results) {
  const LocalClock clock = ClockOf(options.zone);
  const std::string& name = options.eventLog.value();
  const auto history =
      options.history ? LoadHistoryIfExists(*options.history) : std::optional<History>();
  const EventLogImport import =
      ImportEvents(name, ParseEventLog(AsText(ReadInput(name)), name), clock, history);

  const std::string& out = options.out.value();
  auto learning = LearnIfNew(options, ToHistory(out, import.history.records), results);
  SaveHistory(out, import.history.records);
  if (learning) learning->Commit();

  if (options.json) {
    results.output = JsonLine(ImportJson(import, learning.has_value()));
    return;
  }
  results.output = ImportText(import, out);
  if (options.data) results.output += LearntText(*options.data, learning.has_value());
}

}  // namespace

void RunImport(const Options& options, Results& results) {
  if (options.eventLog) {
    ImportEventLog(options, results);
  } else {
    ImportCsv(options, results);
  }
}

}  // namespace dozewell::replay
