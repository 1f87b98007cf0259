#include "replay/command.h"
#include "replay/commands.h"

namespace dozewell {
namespace {

constexpr CommandOption kHistory = {"--history", "FILE",
                                    "History: CSV if named so, else the bytes of zs7state.dat",
                                    &Options::history};
constexpr CommandOption kCsvHistory = {"--history", "FILE", "CSV history to read",
                                       &Options::history};
constexpr CommandOption kDatHistory = {"--history", "FILE", "zs7state.dat to read",
                                       &Options::history};
constexpr CommandOption kOldHistory = {
    "--history", "FILE", "History to merge into; it need not exist yet", &Options::history};
constexpr CommandOption kPending = {"--pending", "FILE", "History with the records to append",
                                    &Options::pending};
constexpr CommandOption kData = {"--data", "FILE", "Data file (cpredict.z7)", &Options::data};
constexpr CommandOption kSettings = {
    "--settings", "FILE", "Settings file; without one, the default settings", &Options::settings};
constexpr CommandOption kOut = {"--out", "FILE", "File to write", &Options::out};
constexpr CommandOption kAt = {"--at", "YYYY-MM-DDTHH:MM:SS",
                               "Local time to predict from; without one, that of the last event",
                               &Options::at};
constexpr CommandOption kNow = {"--now", "YYYY-MM-DDTHH:MM:SS",
                                "Local time of the suspend; without one, that of the last event",
                                &Options::now};
constexpr CommandOption kUtcNow = {"--now", "SECONDS", "UTC seconds since 1970 of the save",
                                   &Options::utcNow};
constexpr CommandOption kLimit = {"--limit", "DAYS", "Days of history to keep", &Options::limit};
constexpr CommandOption kKind = {"--kind", "KIND", "office, home, shift or erratic",
                                 &Options::kind};
constexpr CommandOption kDays = {"--days", "N", "Days of history, 1 to 36500", &Options::days};
constexpr CommandOption kSeed = {"--seed", "N", "The same seed makes the same history",
                                 &Options::seed};

}  // namespace

std::span<const Command> Commands() {
  static const Command kCommands[] = {
      {"learn",
       "Learn a history and write the data file",
       "learn --history zs7state.dat --data cpredict.z7",
       RunLearn,
       {&kHistory, &kData},
       {&kSettings},
       true},
      {"predict",
       "Say when the machine will lie idle and be in use again",
       "predict --data cpredict.z7 --at 2024-03-01T18:00:00",
       RunPredict,
       {&kData},
       {&kAt, &kSettings},
       true},
      {"probabilities",
       "List how likely the machine is in use in each slot of the cycle",
       "probabilities --data cpredict.z7",
       RunProbabilities,
       {&kData},
       {&kSettings},
       true},
      {"suspend",
       "Say what the service would decide on a suspend",
       "suspend --data cpredict.z7 --now 2024-03-01T18:00:00",
       RunSuspend,
       {&kData},
       {&kNow, &kSettings},
       true},
      {"explain",
       "Say why it would decide so, with the evidence",
       "explain --data cpredict.z7 --at 2024-03-01T18:00:00",
       RunExplain,
       {&kData},
       {&kAt, &kSettings},
       true},
      {"week",
       "Draw how likely the machine is in use over the cycle",
       "week --data cpredict.z7",
       RunWeek,
       {&kData},
       {&kSettings},
       false},
      {"merge",
       "Merge new records into a history as the service saves it",
       "merge --history old.dat --pending new.csv --now 1709316000 --limit 60 --out m.dat",
       RunMerge,
       {&kOldHistory, &kPending, &kUtcNow, &kLimit, &kOut},
       {},
       true},
      {"import",
       "Turn a CSV history into a zs7state.dat",
       "import --history history.csv --out zs7state.dat",
       RunImport,
       {&kCsvHistory, &kOut},
       {},
       true},
      {"export",
       "Turn a zs7state.dat into a CSV history",
       "export --history zs7state.dat --out history.csv",
       RunExport,
       {&kDatHistory, &kOut},
       {},
       true},
      {"sample",
       "Make up a history, from Monday, 2024-01-01 on",
       "sample --kind office --days 60 --seed 1 --out office.csv",
       RunSample,
       {&kKind, &kDays, &kSeed, &kOut},
       {},
       true},
  };
  return kCommands;
}

}  // namespace dozewell
