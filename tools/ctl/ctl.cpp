#include "ctl/ctl.h"

#include <cstdio>
#include <exception>
#include <iterator>
#include <string_view>

#include "common/messages.h"
#include "common/plain_text.h"
#include "common/text.h"
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

// No answer counts as no.
bool Confirm(const std::string& question) {
  std::fprintf(stderr, "%s [y/N] ", PlainText(question, '?').c_str());
  std::fflush(stderr);
  char line[80] = {};
  const bool isAnswered = std::fgets(line, static_cast<int>(std::size(line)), stdin) != nullptr;
  // Only what is typed at a terminal is shown there, with its line feed.
  if (!isAnswered || !InputIsTerminal()) std::fputs("\n", stderr);
  std::string_view answer = line;
  while (answer.ends_with('\n') || answer.ends_with('\r')) answer.remove_suffix(1);
  answer = TrimBlanks(answer);
  return EqualIgnoringCase(answer, "y") || EqualIgnoringCase(answer, "yes");
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
          Confirm, InputIsTerminal()};
}

}  // namespace dozewell::ctl
