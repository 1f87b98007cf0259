#include "replay/command_line.h"

#include "common/arguments.h"

namespace dozewell::replay {
namespace {

constexpr const char* kExample =
    "Example:\n"
    "  dozewell-replay sample --kind office --days 60 --seed 1 --out office.csv\n"
    "  dozewell-replay learn --history office.csv --data office.z7\n"
    "  dozewell-replay predict --data office.z7 --at 2024-03-01T18:00:00\n"
    "\n";

// Every command takes it that is about one machine.
constexpr CommandOption kMachine = {
    "--machine", "NAME", "The machine's name in what is printed; else that of the settings",
    &Options::machine};

ValueSyntax SyntaxOf(const CommandOption& option, Options& options, bool required) {
  return {option.name, option.placeholder,      option.description,
          required,    &(options.*option.text), option.words};
}

CommandSyntax SyntaxOf(const Command& command, Options& options) {
  const std::string example = std::string("Example:\n  ") + kProgramName + " " + command.example;
  CommandSyntax syntax = {command.name, command.description, example + command.details, {}, {}};
  for (const auto* option : command.required)
    syntax.values.push_back(SyntaxOf(*option, options, true));
  for (const auto* option : command.optional)
    syntax.values.push_back(SyntaxOf(*option, options, false));
  for (const auto* flag : command.flags)
    syntax.flags.push_back({flag->name, flag->description, &(options.*flag->given)});
  if (command.list != nullptr) {
    const auto& [placeholder, description, texts] = *command.list;
    syntax.list = {placeholder, description, &(options.*texts)};
  } else {
    syntax.values.push_back(SyntaxOf(kMachine, options, false));
  }
  return syntax;
}

}  // namespace

ProgramSyntax Syntax(Options& options) {
  ProgramSyntax syntax = {kProgramName,
                          "Runs the engine that predicts when a machine is used, on files.",
                          kExample,
                          {}};
  for (const Command& command : Commands()) syntax.commands.push_back(SyntaxOf(command, options));
  return syntax;
}

ParsedCommandLine ParseCommandLine(const std::vector<std::string>& arguments) {
  ParsedCommandLine parsed;
  const ProgramSyntax syntax = Syntax(parsed.options);
  const Request request = TakeArguments(syntax, arguments);
  parsed.help = request.help;
  if (parsed.help.empty()) parsed.command = &Commands()[request.command];
  return parsed;
}

}  // namespace dozewell::replay
