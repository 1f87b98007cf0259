#ifndef DOZEWELL_CTL_COMMAND_LINE_H_
#define DOZEWELL_CTL_COMMAND_LINE_H_

#include <string>
#include <vector>

#include "common/arguments.h"
#include "ctl/command.h"

namespace dozewell::ctl {

inline constexpr const char* kProgramName = "dozewellctl";

// All commands and what they take. What is given on a command line goes into the options.
ProgramSyntax Syntax(Options& options);

// What a command line asks for.
struct ParsedCommandLine {
  const Command* command = nullptr;  // null when it asks for help or the version
  Options options;
  std::string help;  // the text to print then
};

// Parses a command line, in UTF-8 and without the program's name. Throws CommandFailure for one
// that makes no sense.
ParsedCommandLine ParseCommandLine(const std::vector<std::string>& arguments);

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_COMMAND_LINE_H_
