#include <optional>
#include <string>
#include <vector>

#include "base/file.h"
#include "base/utf8.h"
#include "common/input_file.h"
#include "common/learning.h"
#include "common/output_file.h"
#include "common/problem_place.h"
#include "common/service_file.h"
#include "common/standard_stream.h"
#include "ctl/command_failure.h"
#include "ctl/commands.h"
#include "ctl/event_feed.h"
#include "ctl/live_files.h"
#include "ctl/live_identity.h"
#include "ctl/service_calls.h"
#include "ctl/service_query.h"
#include "ctl/unreachable_text.h"
#include "event_log/event_log_file.h"
#include "import/event_log_import.h"
#include "prediction/configurations_impl.h"
#include "prediction/cyclic_probability_predictor.h"
#include "prediction/history_file.h"
#include "service/service_host.h"
#include "settings/data_folder.h"
#include "settings/setting_names.h"

namespace dozewell::ctl {
namespace {

constexpr const char* kSystemLog = "the System log";

// A running service would overwrite the imported history, and learn at the same time.
void RequireStopped() {
  const ServiceQuery service = QueryService();
  const bool isMissing = service.error == kErrorServiceMissing;
  const bool isStopped = service.error == 0 && service.state == kServiceStopped;
  if (!isMissing && !isStopped) {
    throw CommandFailure(ExitCode::NotDone, "the service must be stopped, but its state is " +
                                                ServiceStateText(service) +
                                                "; as administrator, net stop DozewellService "
                                                "stops it");
  }
  // The service control manager does not know of a service that runs in a console.
  if (CallPing().outcome != CallOutcome::Unreachable) {
    throw CommandFailure(ExitCode::NotDone, "the service runs in a console; end it there first");
  }
}

std::vector<LogEvent> ReadEvents(const std::optional<std::string>& file) {
  if (file) return ParseEventLog(AsText(ReadInput(*file, kMostOfEventLog)), *file);
  std::vector<LogEvent> events;
  const uint32_t error = ReadSystemLog([&events](const std::string& xml) {
    for (const LogEvent& event : ParseEventLog(xml, kSystemLog)) events.push_back(event);
  });
  if (error == 0) return events;
  throw CommandFailure(ExitCode::NotDone, std::string(kSystemLog) + " cannot be read (error " +
                                              std::to_string(error) +
                                              "); --from reads an export of it");
}

// The service's files.
struct DataFiles {
  std::string history = PathToSystem(LiveFilePath(kHistoryFileName));
  std::string data = PathToSystem(LiveFilePath(kDataFileName));
};

std::string Question(const DataFiles& files, const EventLogImport& import, bool learns) {
  const size_t added = import.history.added;
  const size_t kept = import.history.records.size() - added;
  std::string question;
  if (added > 0) {
    question = files.history + " gets " + AddedText(import);
    if (kept > 0) question += ", before the " + std::to_string(kept) + " that it keeps";
    question += ". ";
  }
  if (learns) question += files.data + " is made from it. ";
  return question + "Go on?";
}

void Write(const DataFiles& files, const EventLogImport& import, bool learns,
           const Console& console) {
  // Creates the folder, now that there is something to put into it.
  GetDataFolder();
  const History history = ToHistory(files.history, import.history.records);
  ConfigurationsImpl configuration;
  std::optional<Learning> learning;
  std::vector<std::string> warnings;
  const auto place = [&] {
    return PlaceOfProblem(configuration, {NarrowToUtf8(kProductKey), files.data});
  };
  TellPlace(place, [&] {
    if (learns) learning.emplace(history, configuration, files.data, warnings);
  });
  for (const std::string& warning : warnings) console.warn("warning: " + warning);
  if (import.history.added > 0) SaveDatHistory(files.history, import.history.records);
  if (learning) learning->Commit();
}

}  // namespace

void RunImportHistory(const Options& options, const Console& console) {
  if (options.from && IsStandardStream(*options.from) && !options.yes) {
    throw CommandFailure(ExitCode::Usage,
                         "--from -: the log takes the place of an answer; --yes does not ask");
  }
  RequireStopped();
  const DataFiles files;
  RequireNoInput(files.history, {{"--from", options.from}});
  RequireNoInput(files.data, {{"--from", options.from}});
  std::vector<std::string> warnings;
  const EventLogImport import =
      ImportEvents(options.from.value_or(kSystemLog), ReadEvents(options.from), SystemClock(),
                   LoadHistoryIfExists(files.history, warnings));
  for (const std::string& warning : warnings) console.warn("warning: " + warning);
  const bool learns = !ReadInputIfExists(NameThatCounts(files.data));
  const bool changes = import.history.added > 0 || learns;
  if (changes) {
    if (!options.yes && !console.confirm(Question(files, import, learns))) {
      throw CommandFailure(ExitCode::NotDone, "nothing was imported");
    }
    Write(files, import, learns, console);
  }
  if (options.json) {
    console.print(LiveLine(ImportJson(import, learns)));
  } else {
    console.print(ImportText(import, files.history) + LearntText(files.data, learns));
  }
}

}  // namespace dozewell::ctl
