#include "ctl/require_new_file.h"

#include "base/utf8.h"
#include "common/named_file.h"
#include "common/standard_stream.h"
#include "ctl/command_failure.h"
#include "ctl/live_files.h"

namespace dozewell::ctl {

void RequireNewFile(const std::string& output, const Options& options, const Console& console) {
  if (IsStandardStream(output)) return;
  RequireNoServiceFile(output);
  if (options.yes || LookUp(PathFromSystem(output)).kind == FileKind::Missing) return;
  if (!console.isTerminal) {
    throw CommandFailure(ExitCode::Usage, output + ": is there already; --yes replaces it");
  }
  if (!console.confirm(output + " is there already. Replace it?")) {
    throw CommandFailure(ExitCode::NotDone, output + ": stays as it is");
  }
}

}  // namespace dozewell::ctl
