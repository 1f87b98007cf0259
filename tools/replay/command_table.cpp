#include "replay/command.h"
#include "replay/commands.h"

namespace dozewell::replay {
namespace {

constexpr CommandOption kHistory = {"--history", "FILE",
                                    "History: CSV if named so, else the bytes of zs7state.dat",
                                    &Options::history};
constexpr CommandOption kImportedHistory = {"--history", "FILE",
                                            "CSV history; with an event log, the history to extend",
                                            &Options::history};
constexpr CommandOption kEventLog = {
    "--from-event-log", "FILE", "What wevtutil qe System /f:xml or dozewell-powerwatch has written",
    &Options::eventLog};
constexpr CommandOption kZone = {"--zone", "RULES",
                                 "Time zone of that log's machine; without one, this machine's",
                                 &Options::zone};
constexpr CommandOption kNewData = {"--data", "FILE",
                                    "Data file to write as learn does, unless there is one",
                                    &Options::data, true};
constexpr CommandOption kDatHistory = {"--history", "FILE", "zs7state.dat to read",
                                       &Options::history};
constexpr CommandOption kOldHistory = {
    "--history", "FILE", "History to merge into; it need not exist yet", &Options::history};
constexpr CommandOption kPending = {"--pending", "FILE", "History with the records to append",
                                    &Options::pending};
constexpr CommandOption kData = {"--data", "FILE", "Data file (cpredict.z7)", &Options::data};
constexpr CommandOption kLearntByEither = {
    "--data", "FILE", "Data file: cpredict.z7, or rates.z7 of rates", &Options::data};
constexpr CommandOption kLearntData = {"--data", "FILE", "Data file (cpredict.z7) to write",
                                       &Options::data, true};
constexpr CommandOption kSettings = {
    "--settings", "FILE", "Settings file; without one, the default settings", &Options::settings};
constexpr CommandOption kOut = {"--out", "FILE", "File to write", &Options::out, true};
constexpr CommandOption kAt = {
    "--at", "TIME", "Time to predict from; without one, that of the last event", &Options::at};
constexpr CommandOption kNow = {
    "--now", "TIME", "Time of the suspend; without one, that of the last event", &Options::now};
constexpr CommandOption kReportTime = {
    "--now", "TIME", "Time of the report; without one, that of the last event learnt",
    &Options::now};
constexpr CommandOption kSaveTime = {"--now", "TIME", "Time of the save", &Options::now};
constexpr CommandOption kLimit = {"--limit", "DAYS", "Days of history to keep", &Options::limit};
constexpr CommandOption kKind = {"--kind",       "KIND", "office, home, shift or erratic",
                                 &Options::kind, false,  "office home shift erratic"};
constexpr CommandOption kDays = {"--days", "N", "Days of history, 1 to 36500", &Options::days};
constexpr CommandOption kHibernateAfter = {
    "--hibernate-after", "DURATION", "Fixed timeout, as 45m, 1h30m or never; without one, 10m",
    &Options::hibernateAfter};
constexpr CommandOption kTimeoutToBeat = {
    "--hibernate-after", "DURATION",
    "Fixed timeout to beat, as 45m, 1h30m or never; without one, 10m", &Options::hibernateAfter};
constexpr CommandOption kTimeoutToCompare = {
    "--hibernate-after", "DURATION", "User's own timeout, as 45m, 1h30m or never; without one, 3h",
    &Options::hibernateAfter};
constexpr CommandOption kSeed = {"--seed", "N", "The same seed makes the same history",
                                 &Options::seed};
constexpr CommandOption kStrength = {"--strength", "TEXT",
                                     "Value of Strength, which chooses among Best0, Best1, ...",
                                     &Options::strength};
constexpr CommandOption kBest = {"--best", "FILE",
                                 "Text of the chosen set; without such a file, there is no set",
                                 &Options::best};

constexpr CommandOption kPredictor = {
    "--predictor",       "NAME", "slots or rates; without one, slots",
    &Options::predictor, false,  "slots rates"};

constexpr CommandOption kPage = {"--out", "FILE", "Page of HTML to write", &Options::out, true};
constexpr CommandOption kCsv = {"--csv", "FILE", "Table to write, with a row for each machine",
                                &Options::csv, true};
constexpr CommandOption kPartial = {"--partial", "FILE",
                                    "Result to write machine by machine, for --resume and --merge",
                                    &Options::partial, true};
constexpr CommandOption kPart = {
    "--part", "K/N", "Take the K-th of N equal parts of the machines only", &Options::part};
constexpr CommandOption kGroups = {
    "--groups", "FILE", "Lines NAME,GROUP, for recommendations by group", &Options::groups};
constexpr CommandOption kWattsAsleep = {
    "--watts-asleep", "WATTS", "What a machine takes asleep; without it, 4", &Options::wattsAsleep};
constexpr CommandOption kWattsHibernated = {"--watts-hibernated", "WATTS",
                                            "What a machine takes hibernated; without it, 2",
                                            &Options::wattsHibernated};
constexpr CommandOption kPrice = {"--price", "MONEY",
                                  "What a kilowatt-hour costs; without it, 0.20", &Options::price};
constexpr CommandOption kThreads = {
    "--threads", "N", "Threads to use; without it, one for each processor", &Options::threads};
constexpr CommandOption kOwnTimeout = {
    "--hibernate-after", "DURATION",
    "The users' own timeout, as 45m, 1h30m or never; without one, 10m", &Options::hibernateAfter};

constexpr CommandFlag kJson = {"--json", "Print JSON for programs", &Options::json};
constexpr CommandFlag kReplace = {
    "--replace", "Do not ask before a history loses records by being replaced", &Options::replace};
constexpr CommandFlag kTimeLine = {"--timeline", "Print the time line first", &Options::timeLine};
constexpr CommandFlag kNoWake = {
    "--no-wake", "With rates: plan for a machine that no timer can wake", &Options::noWake};
constexpr CommandFlag kResume = {"--resume", "Go on with the partial result of a stopped run",
                                 &Options::resume};
constexpr CommandFlag kMerge = {"--merge", "Add up partial results, which are given as FOLDER",
                                &Options::merge};
constexpr CommandFlag kEach = {"--each", "Print CSV with a line for each set first",
                               &Options::each};

constexpr CommandList kFolders = {
    "FOLDER", "Folders with histories at any depth: files *.dat and *.csv", &Options::folders};

constexpr const char* kTimeLineDetails =
    "\n\n"
    "A line of the time line has the seconds of a change and the state that begins with it: 0 in\n"
    "use, 1 in limbo, 2 asleep, 3 hibernated, 5 hibernated by a prediction, 6 asleep again by a\n"
    "prediction.";

constexpr const char* kSearchDetails =
    "\n\n"
    "The CSV has no header but a comment with the machine, if it has a name. Its columns are the\n"
    "weights of the last, the second-last and the older observations, the high and the low\n"
    "strength, the day grouping, the seconds asleep and hibernated, the resumes from sleep and\n"
    "from hibernation.";

constexpr const char* kCompareDetails =
    "\n\n"
    "The settings are taken as they are and, as Best0, Best1 and so on, as a search with their\n"
    "ranges and weights would change them; where that finds nothing better (-1), the fixed "
    "timeout\n"
    "stays. Clairvoyant is the best prediction for each sleep, made by someone who knows when the\n"
    "user comes: hibernation from the first 10-minute slot's start on and sleep again from the\n"
    "last one's before the user, if that leaves 30 minutes or more between them.\n"
    "\n"
    "Then the history is walked forward: each sleep is decided from what came before it alone, "
    "and\n"
    "counted as a real machine spends it; where nothing is predicted, the fixed timeout holds. "
    "The\n"
    "service searches when it would. A score is the weight (WR) times the share of resumes from\n"
    "sleep, plus what is left of 100 times the share of time hibernated; 95 of 100 draws of whole\n"
    "weeks lie in the range behind it.";

constexpr const char* kFleetDetails =
    "\n"
    "  dozewell-replay fleet --part 1/2 --partial 1.part machines\n"
    "  dozewell-replay fleet --part 2/2 --partial 2.part machines\n"
    "  dozewell-replay fleet --merge --out fleet.html 1.part 2.part\n"
    "\n"
    "A history that cannot be judged is one line of what is printed. A partial result is complete\n"
    "when its run has ended; a run that was stopped goes on after the last machine with --resume.";

constexpr const char* kImportDetails =
    "\n"
    "  dozewell-replay import --from-event-log system.xml --out zs7state.dat --data cpredict.z7\n"
    "\n"
    "The rules of a time zone are those of the variable TZ of POSIX, such as UTC0, JST-9,\n"
    "CET-1CEST,M3.5.0,M10.5.0/3 or EST5EDT,M3.2.0,M11.1.0.";

}  // namespace

std::span<const Command> Commands() {
  static const Command kCommands[] = {
      {"learn",
       "Learn a history and write the data file",
       "learn --history zs7state.dat --data cpredict.z7",
       RunLearn,
       {&kHistory, &kLearntData},
       {&kSettings},
       {&kJson}},
      {"predict",
       "Say when the machine will lie idle and be in use again",
       "predict --data cpredict.z7 --at 2024-03-01T18:00",
       RunPredict,
       {&kData},
       {&kAt, &kSettings},
       {&kJson}},
      {"probabilities",
       "List how likely the machine is in use in each slot of the cycle",
       "probabilities --data cpredict.z7",
       RunProbabilities,
       {&kData},
       {&kSettings},
       {&kJson}},
      {"suspend",
       "Say what the service would decide on a suspend",
       "suspend --data cpredict.z7 --now 2024-03-01T18:00",
       RunSuspend,
       {&kData},
       {&kNow, &kSettings},
       {&kJson}},
      {"explain",
       "Say why it would decide so, with the evidence",
       "explain --data cpredict.z7 --at 2024-03-01T18:00",
       RunExplain,
       {&kLearntByEither},
       {&kAt, &kSettings, &kPredictor},
       {&kJson, &kNoWake}},
      {"week",
       "Draw how likely the machine is in use over the cycle, and how sure that is",
       "week --data cpredict.z7",
       RunWeek,
       {&kData},
       {&kSettings},
       {&kJson}},
      {"compare",
       "Compare fixed timeouts, settings, the service as it lives, rates, and the best possible",
       "compare --history zs7state.dat",
       RunCompare,
       {&kHistory},
       {&kSettings, &kTimeoutToBeat},
       {&kJson},
       kCompareDetails},
      {"fleet",
       "Compare all that on the histories of many machines, and add it up",
       "fleet --out fleet.html --partial fleet.part machines",
       RunFleet,
       {},
       {&kSettings, &kOwnTimeout, &kGroups, &kWattsAsleep, &kWattsHibernated, &kPrice, &kPage,
        &kCsv, &kPartial, &kPart, &kThreads},
       {&kResume, &kMerge, &kJson},
       kFleetDetails,
       &kFolders},
      {"report",
       "Write a page of HTML: what will happen tonight, what was learnt, what it was worth, and "
       "why",
       "report --history zs7state.dat --data cpredict.z7 --out report.html",
       RunReport,
       {&kHistory, &kData, &kOut},
       {&kSettings, &kTimeoutToCompare, &kReportTime},
       {&kJson}},
      {"merge",
       "Merge new records into a history as the service saves it",
       "merge --history old.dat --pending new.csv --now 1709316000 --limit 60 --out m.dat",
       RunMerge,
       {&kOldHistory, &kPending, &kSaveTime, &kLimit, &kOut},
       {},
       {&kJson}},
      {"import",
       "Turn a CSV history or a Windows event log into a zs7state.dat",
       "import --history history.csv --out zs7state.dat",
       RunImport,
       {&kOut},
       {&kImportedHistory, &kEventLog, &kZone, &kNewData, &kSettings},
       {&kReplace, &kJson},
       kImportDetails},
      {"export",
       "Turn a zs7state.dat into a CSV history",
       "export --history zs7state.dat --out history.csv",
       RunExport,
       {&kDatHistory, &kOut},
       {},
       {&kJson}},
      {"sample",
       "Make up a history, from Monday, 2024-01-01 on",
       "sample --kind office --days 60 --seed 1 --out office.csv",
       RunSample,
       {&kKind, &kDays, &kSeed, &kOut},
       {},
       {&kJson}},
      {"simulate",
       "Replay a history with predictions and count what comes of it",
       "simulate --history zs7state.dat --timeline",
       RunSimulate,
       {&kHistory},
       {&kSettings, &kPredictor},
       {&kJson, &kTimeLine, &kNoWake},
       kTimeLineDetails},
      {"baseline",
       "Replay a history with a fixed timeout and count what comes of it",
       "baseline --history zs7state.dat --hibernate-after 30",
       RunBaseline,
       {&kHistory},
       {&kHibernateAfter},
       {&kJson, &kTimeLine},
       kTimeLineDetails},
      {"search",
       "Search the ranges in the settings for the best parameters",
       "search --history zs7state.dat --hibernate-after 30",
       RunSearch,
       {&kHistory},
       {&kSettings, &kTimeoutToBeat},
       {&kJson, &kEach},
       kSearchDetails},
      {"apply",
       "Say what the settings become when a set is chosen",
       "apply --strength 0 --best best0.txt",
       RunApply,
       {&kStrength, &kBest},
       {},
       {&kJson}},
  };
  return kCommands;
}

}  // namespace dozewell::replay
