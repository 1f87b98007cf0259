#include "ctl/command_line.h"

#include "common/arguments.h"
#include "common/tool_error.h"
#include "ctl/command_failure.h"

namespace dozewell::ctl {
namespace {

constexpr const char* kFooter =
    "Exit codes: 0 done, 1 refused by the service, not available or BAD, 2 wrong usage,\n"
    "3 the service does not answer, 4 nothing is known of what it has learnt.\n"
    "\n"
    "Example:\n"
    "  dozewellctl status\n"
    "  dozewellctl power set dc hibernate-after 3h\n"
    "  dozewellctl explain\n"
    "\n";

std::string ExamplesOf(const Command& command) {
  std::string examples = "Example:";
  for (const char* example : command.examples) {
    examples += std::string("\n  ") + kProgramName + " " + example;
  }
  return examples;
}

ValueSyntax SyntaxOf(const CommandArgument& argument, Options& options, bool required) {
  return {argument.name, argument.placeholder,      argument.description,
          required,      &(options.*argument.text), argument.words};
}

CommandSyntax SyntaxOf(const Command& command, Options& options) {
  CommandSyntax syntax = {command.name, command.description, ExamplesOf(command), {}, {}};
  for (const auto* argument : command.required)
    syntax.values.push_back(SyntaxOf(*argument, options, true));
  for (const auto* argument : command.optional)
    syntax.values.push_back(SyntaxOf(*argument, options, false));
  if (command.takesYes) syntax.flags.push_back({"--yes", "Do not ask first", &options.yes});
  if (command.takesTry) {
    syntax.flags.push_back({"--try",
                            "Also write each hibernate-after timeout as it is, and time it",
                            &options.tryWriting});
  }
  if (command.takesMetrics) {
    syntax.flags.push_back(
        {"--metrics", "Print metrics for collectors that read text files", &options.metrics});
  }
  if (command.takesAnonymous) {
    syntax.flags.push_back(
        {"--anonymous", "Without names, and with times cut to the minute", &options.anonymous});
  }
  syntax.flags.push_back({"--json", "Print JSON for programs", &options.json});
  return syntax;
}

}  // namespace

ProgramSyntax Syntax(Options& options) {
  ProgramSyntax syntax = {kProgramName,
                          "Shows and steers what the Dozewell service does with this machine.",
                          kFooter,
                          {},
                          GroupDescription};
  for (const Command& command : Commands()) syntax.commands.push_back(SyntaxOf(command, options));
  return syntax;
}

ParsedCommandLine ParseCommandLine(const std::vector<std::string>& arguments) {
  ParsedCommandLine parsed;
  const ProgramSyntax syntax = Syntax(parsed.options);
  try {
    const Request request = TakeArguments(syntax, arguments);
    parsed.help = request.help;
    if (parsed.help.empty()) parsed.command = &Commands()[request.command];
  } catch (const ToolError& error) {
    throw CommandFailure(ExitCode::Usage, error.what());
  }
  return parsed;
}

}  // namespace dozewell::ctl
