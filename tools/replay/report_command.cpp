#include "common/json.h"
#include "common/optimizer_inputs.h"
#include "common/output_file.h"
#include "replay/commands.h"
#include "replay/learnt_data.h"
#include "replay/search_habits.h"
#include "report/report.h"

namespace dozewell::replay {

void RunReport(const Options& options, Results& results) {
  RequireNoInput(
      options.out.value(),
      {{"--history", options.history}, {"--data", options.data}, {"--settings", options.settings}});
  const auto history = LoadOptimizerHistory(options.history.value(), results.warnings);
  LearntData learnt(options, results);
  ArbitraryCycleProbabilityTracker& tracker = learnt.Tracker();
  // The page shows the warnings too.
  const std::string page = report::MakeReport(
      {learnt.Configuration(), tracker, history, learnt.TimeOrLastEvent("--now", options.now),
       ComparedTimeoutSeconds(options.hibernateAfter), HabitsOf(learnt.Configuration()),
       results.warnings, results.identity});
  const std::string& name = options.out.value();
  OutputFile(name).Write(page.data(), page.size());
  results.output = options.json
                       ? IdentifiedLine({{"file", name}, {"bytes", page.size()}}, results.identity)
                       : name + ": " + std::to_string(page.size()) + " bytes\n";
}

}  // namespace dozewell::replay
