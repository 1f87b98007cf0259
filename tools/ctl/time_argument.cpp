#include "ctl/time_argument.h"

#include "common/option_text.h"
#include "ctl/command_failure.h"

namespace dozewell::ctl {

tm ParseTimeArgument(const char* argument, const std::string& text) {
  try {
    return ParseTimeOption(argument, text);
  } catch (const ToolError& error) {
    throw CommandFailure(ExitCode::Usage, error.what());
  }
}

}  // namespace dozewell::ctl
