#include <chrono>

#include "ctl/check/check_report.h"
#include "ctl/command_failure.h"
#include "ctl/commands.h"
#include "ctl/live_identity.h"
#include "ctl/require_done.h"

namespace dozewell::ctl {
namespace {

double MillisecondsNow() {
  const auto time = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration<double, std::milli>(time).count();
}

}  // namespace

// Everything that was found is printed before a failure tells what it comes to.
void RunCheck(const Options& options, const Console& console) {
  const CheckFacts facts = GatherFacts();
  CheckReport report = {Judge(facts), std::nullopt};
  if (options.tryWriting) report.tried = TryTimeouts(MillisecondsNow);
  console.print(options.json ? LiveLine(CheckJson(report)) : CheckText(report));
  RequireReachable(facts.ping);
  if (const size_t bad = report.Count(Verdict::Bad)) {
    throw CommandFailure(
        ExitCode::NotDone,
        std::to_string(bad) + " of " + std::to_string(report.lines.size()) + " lines are BAD");
  }
  if (report.tried && !report.tried->IsDone()) {
    throw CommandFailure(ExitCode::NotDone, "the timeouts could not all be read and written");
  }
}

}  // namespace dozewell::ctl
