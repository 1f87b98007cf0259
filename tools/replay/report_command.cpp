#include "replay/commands.h"
#include "replay/learnt_data.h"
#include "replay/optimizer_inputs.h"
#include "replay/output_file.h"
#include "report/report.h"

namespace dozewell {

void RunReport(const Options& options, Results& results) {
  const auto history = LoadOptimizerHistory(options.history.value());
  LearntData learnt(options, results);
  ArbitraryCycleProbabilityTracker tracker = learnt.Tracker();
  // What the user is warned of, the reader of the page is told too.
  const std::string page = report::MakeReport(
      {learnt.Configuration(), tracker, history, learnt.TimeOrLastEvent("--now", options.now),
       HibernateAfterSeconds(options.hibernateAfter), results.warnings});
  const std::string& name = options.out.value();
  OutputFile(name).Write(page.data(), page.size());
  results.output = name + ": " + std::to_string(page.size()) + " bytes\n";
}

}  // namespace dozewell
