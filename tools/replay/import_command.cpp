#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "common/history_io.h"
#include "common/input_file.h"
#include "common/learning.h"
#include "common/named_file.h"
#include "common/option_text.h"
#include "common/output_file.h"
#include "common/problem_place.h"
#include "common/question.h"
#include "common/service_file.h"
#include "common/standard_stream.h"
#include "common/text.h"
#include "common/tool_error.h"
#include "event_log/event_log_file.h"
#include "event_log/zone_rules.h"
#include "import/event_log_import.h"
#include "import/lost_records.h"
#include "import/powerwatch_file.h"
#include "replay/commands.h"
#include "replay/saved_text.h"
#include "replay/taken_settings.h"

namespace dozewell::replay {
namespace {

// An import may replace a history by one that lacks some of its records only if the user says so.
void RequireConsent(const Options& options, std::span<const HistoryRecord> records,
                    const std::string& alternative) {
  const std::string& out = options.out.value();
  if (options.replace || IsStandardStream(out)) return;
  const auto lost = static_cast<int64_t>(CountLostRecords(out, records));
  if (lost == 0) return;
  const std::string loses = out + " would lose " + CountText(lost, "record", "records");
  if (!options.canAsk) throw ToolError(loses + "; --replace replaces it" + alternative);
  if (!Confirm(loses + ". Replace it?", options.canAsk)) throw ToolError("nothing was imported");
}

void ImportCsv(const Options& options, Results& results) {
  if (!options.history) throw ToolError("--history is required");
  for (const auto& [option, isGiven] : {std::pair("--zone", options.zone.has_value()),
                                        {"--data", options.data.has_value()},
                                        {"--settings", options.settings.has_value()}}) {
    if (isGiven) throw ToolError(std::string(option) + " requires --from-event-log");
  }
  RequireNoInput(options.out.value(), {{"--history", options.history}});
  const auto records = WholeRecords(LoadCsvHistory(*options.history, results.warnings).bytes);
  RequireConsent(options, records, "");
  SaveDatHistory(options.out.value(), records);
  results.output = SavedText(options, records, results.identity);
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
  const bool isThere =
      !IsStandardStream(*options.data) && ReadInputIfExists(NameThatCounts(*options.data));
  if (isThere) return std::nullopt;
  FileConfigurations configuration = TakeSettings(options, results);
  const auto place = [&] {
    return PlaceOfProblem(configuration, {configuration.Name(), *options.data});
  };
  return TellPlace(place, [&] {
    return std::optional<Learning>(std::in_place, history, configuration, *options.data,
                                   results.warnings);
  });
}

// The history that is extended may be the one that is written.
void RequireOtherOutputs(const Options& options) {
  RequireNoInput(options.out.value(),
                 {{"--from-event-log", options.eventLog}, {"--settings", options.settings}});
  if (!options.data) return;
  RequireNoInput(*options.data, {{"--from-event-log", options.eventLog},
                                 {"--history", options.history},
                                 {"--settings", options.settings},
                                 {"--out", options.out}});
}

std::optional<History> HistoryToExtend(const Options& options, std::vector<std::string>& warnings) {
  if (!options.history) return std::nullopt;
  if (!IsSameFile(*options.history, options.out.value())) {
    return LoadHistory(*options.history, warnings);
  }
  return LoadHistoryIfExists(*options.history, warnings);
}

// What the file that is imported is, which shows in its content.
EventLogImport ImportLog(const Options& options, const LocalClock& clock,
                         const std::optional<History>& history) {
  const std::string& name = options.eventLog.value();
  const auto content = ReadInput(name, kMostOfEventLog);
  if (!IsPowerwatch(AsText(content))) {
    return ImportEvents(name, ParseEventLog(AsText(content), name), clock, history);
  }
  if (options.zone) throw ToolError("--zone: " + name + " has its machine's local time itself");
  PowerwatchLog watched = ParsePowerwatch(AsText(content), name);
  EventLogImport import = ImportEvents(name, std::move(watched.events), watched.clock, history);
  import.source = "the watch";
  return import;
}

void ImportEventLog(const Options& options, Results& results) {
  const LocalClock clock = ClockOf(options.zone);
  const std::string& out = options.out.value();
  RequireOtherOutputs(options);
  const auto history = HistoryToExtend(options, results.warnings);
  const EventLogImport import = ImportLog(options, clock, history);
  // A history that is extended only gains records.
  if (!options.history || !IsSameFile(*options.history, out)) {
    RequireConsent(options, import.history.records, ", --history " + out + " extends it");
  }

  auto learning = LearnIfNew(options, ToHistory(out, import.history.records), results);
  results.identity.time = TimeOfLast(import.history.records);
  SaveHistory(out, import.history.records, results.identity);
  if (learning) learning->Commit();

  if (options.json) {
    results.output = IdentifiedLine(ImportJson(import, learning.has_value()), results.identity);
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
