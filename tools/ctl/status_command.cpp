#include "ctl/commands.h"
#include "ctl/live_identity.h"
#include "ctl/require_done.h"
#include "ctl/status_report.h"

namespace dozewell::ctl {

// What is known of a service that does not answer is worth showing too.
void RunStatus(const Options& options, const Console& console) {
  const StatusReport report = MakeStatusReport();
  console.print(options.json ? LiveLine(StatusJson(report)) : StatusText(report));
  RequireReachable(report.ping);
}

}  // namespace dozewell::ctl
