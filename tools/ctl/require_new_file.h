#ifndef DOZEWELL_CTL_REQUIRE_NEW_FILE_H_
#define DOZEWELL_CTL_REQUIRE_NEW_FILE_H_

#include <string>

#include "ctl/command.h"

namespace dozewell::ctl {

// Has the user agree to the loss of a file that an output would replace; with --yes it does not
// ask. Throws CommandFailure without consent, and ToolError for one of the service's own files.
void RequireNewFile(const std::string& output, const Options& options, const Console& console);

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_REQUIRE_NEW_FILE_H_
