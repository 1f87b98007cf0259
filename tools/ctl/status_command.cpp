#include <string>

#include "common/output_file.h"
#include "common/standard_stream.h"
#include "ctl/command_failure.h"
#include "ctl/commands.h"
#include "ctl/live_files.h"
#include "ctl/live_identity.h"
#include "ctl/require_done.h"
#include "ctl/status_metrics.h"
#include "ctl/status_report.h"

namespace dozewell::ctl {
namespace {

void RequireOneForm(const Options& options) {
  if (options.metrics && options.json) {
    throw CommandFailure(ExitCode::Usage, "--metrics and --json are two forms of the same");
  }
  if (options.out && !options.metrics) {
    throw CommandFailure(ExitCode::Usage, "--out is for --metrics");
  }
}

// Whoever reads the file sees all of it, of this run or of the last.
void WriteMetrics(const std::string& metrics, const Options& options, const Console& console) {
  if (!options.out || IsStandardStream(*options.out)) {
    console.print(metrics);
  } else {
    OutputFile(*options.out).Write(metrics.data(), metrics.size());
  }
}

}  // namespace

// What is known of a service that does not answer is worth showing too.
void RunStatus(const Options& options, const Console& console) {
  RequireOneForm(options);
  if (options.out) RequireNoServiceFile(*options.out);
  const StatusReport report = MakeStatusReport();
  if (options.metrics) {
    WriteMetrics(StatusMetrics(report), options, console);
  } else {
    console.print(options.json ? LiveLine(StatusJson(report)) : StatusText(report));
  }
  RequireReachable(report.ping);
}

}  // namespace dozewell::ctl
