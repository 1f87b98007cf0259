#include "ctl/require_done.h"

#include "ctl/command_failure.h"
#include "ctl/service_query.h"
#include "ctl/unreachable_text.h"

namespace dozewell::ctl {

void RequireReachable(const CallResult& result) {
  if (result.outcome != CallOutcome::Unreachable) return;
  throw CommandFailure(ExitCode::NotReachable, UnreachableText(result.status, QueryService()));
}

void RequireDone(const CallResult& result, const std::string& refusal) {
  RequireReachable(result);
  if (!result.IsDone()) throw CommandFailure(ExitCode::NotDone, refusal);
}

}  // namespace dozewell::ctl
