#include "ctl/ctl.h"

#include <exception>

#include "common/messages.h"
#include "common/question.h"
#include "ctl/command_failure.h"
#include "ctl/command_line.h"
#include "ctl/stranger.h"
#include "ctl/terminal.h"

namespace dozewell::ctl {
namespace {

void RunCommandLine(const std::vector<std::string>& arguments, const Console& console) {
  const ParsedCommandLine parsed = ParseCommandLine(arguments);
  if (parsed.command == nullptr) {
    console.print(parsed.help);
    return;
  }
  try {
    parsed.command->run(parsed.options, console);
  } catch (...) {
    WarnOfStranger(console);
    throw;
  }
  WarnOfStranger(console);
}

}  // namespace

int RunCtl(const std::vector<std::string>& arguments, const Console& console) {
  const auto fail = [&console](const std::exception& error, ExitCode code) {
    console.warn(error.what());
    return static_cast<int>(code);
  };
  try {
    RunCommandLine(arguments, console);
    return static_cast<int>(ExitCode::Done);
  } catch (const CommandFailure& failure) {
    return fail(failure, failure.Code());
  } catch (const std::exception& error) {
    return fail(error, ExitCode::NotDone);
  }
}

Console StandardConsole() {
  return {PrintOutput, [](const std::string& message) { PrintMessage(kProgramName, message); },
          [](const std::string& question) { return Confirm(question, InputIsTerminal()); },
          InputIsTerminal()};
}

}  // namespace dozewell::ctl
