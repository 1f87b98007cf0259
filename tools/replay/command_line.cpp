#include "replay/command_line.h"

#include <CLI/CLI.hpp>

#include "common/arguments.h"
#include "common/tool_error.h"

namespace dozewell::replay {
namespace {

constexpr const char* kExample =
    "Example:\n"
    "  dozewell-replay sample --kind office --days 60 --seed 1 --out office.csv\n"
    "  dozewell-replay learn --history office.csv --data office.z7\n"
    "  dozewell-replay predict --data office.z7 --at 2024-03-01T18:00:00\n"
    "\n"
    "dozewell-replay COMMAND --help explains a command.";

void AddOption(CLI::App& app, const CommandOption& option, Options& options, bool required) {
  AddText(app, option.name, option.placeholder, option.description, required, options.*option.text);
}

void AddCommand(CLI::App& program, const Command& command, ParsedCommandLine& parsed) {
  CLI::App& app = *program.add_subcommand(command.name, command.description);
  for (const auto* option : command.required) AddOption(app, *option, parsed.options, true);
  for (const auto* option : command.optional) AddOption(app, *option, parsed.options, false);
  for (const auto* flag : command.flags)
    app.add_flag(flag->name, parsed.options.*flag->given, flag->description);
  app.group("Commands");
  app.footer(std::string("Example:\n  ") + kProgramName + " " + command.example + command.details);
  app.callback([&parsed, &command] { parsed.command = &command; });
}

}  // namespace

ParsedCommandLine ParseCommandLine(const std::vector<std::string>& arguments) {
  ParsedCommandLine parsed;
  CLI::App program("Runs the engine that predicts when a machine is used, on files.", kProgramName);
  AddCommonOptions(program, kProgramName);
  program.footer(kExample);
  for (const Command& command : Commands()) AddCommand(program, command, parsed);

  try {
    parsed.help = TakeArguments(program, arguments);
  } catch (const CLI::ParseError& error) {
    throw ToolError(error.what());
  }
  if (!parsed.help.empty()) {
    parsed.command = nullptr;
  } else if (parsed.command == nullptr) {
    throw ToolError(std::string("no command; ") + kProgramName + " --help lists them");
  }
  return parsed;
}

}  // namespace dozewell::replay
