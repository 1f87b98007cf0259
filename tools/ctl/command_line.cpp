#include "ctl/command_line.h"

#include <CLI/CLI.hpp>

#include "common/arguments.h"
#include "ctl/command_failure.h"

namespace dozewell::ctl {
namespace {

constexpr const char* kFooter =
    "Exit codes: 0 done, 1 refused by the service or not available, 2 wrong usage,\n"
    "3 the service does not answer.\n"
    "\n"
    "Example:\n"
    "  dozewellctl status\n"
    "  dozewellctl power set dc hibernate-after 3h\n"
    "  dozewellctl explain\n"
    "\n";

void AddArgument(CLI::App& app, const CommandArgument& argument, Options& options, bool required) {
  AddText(app, argument.name, argument.placeholder, argument.description, required,
          options.*argument.text);
}

std::string ExplainsACommand(const std::string& prefix) {
  return prefix + " COMMAND --help explains a command.";
}

CLI::App& FindOrAddGroup(CLI::App& program, const std::string& name) {
  const auto found =
      program.get_subcommands([&name](CLI::App* app) { return app->get_name() == name; });
  if (!found.empty()) return *found.front();
  CLI::App& group = *program.add_subcommand(name, GroupDescription(name));
  group.group("Commands");
  group.footer(ExplainsACommand(kProgramName + (" " + name)));
  group.require_subcommand(0, 1);
  return group;
}

// Puts the command in its group, if it is in one.
CLI::App& AddByName(CLI::App& program, const Command& command) {
  const std::string name = command.name;
  const size_t blank = name.find(' ');
  if (blank == std::string::npos) return *program.add_subcommand(name, command.description);
  return *FindOrAddGroup(program, name.substr(0, blank))
              .add_subcommand(name.substr(blank + 1), command.description);
}

void AddCommand(CLI::App& program, const Command& command, ParsedCommandLine& parsed) {
  CLI::App& app = AddByName(program, command);
  for (const auto* argument : command.required) AddArgument(app, *argument, parsed.options, true);
  for (const auto* argument : command.optional) AddArgument(app, *argument, parsed.options, false);
  if (command.takesYes) app.add_flag("--yes", parsed.options.yes, "Do not ask first");
  app.add_flag("--json", parsed.options.json, "Print JSON for programs");
  app.group("Commands");
  std::string examples = "Example:";
  for (const char* example : command.examples) {
    examples += std::string("\n  ") + kProgramName + " " + example;
  }
  app.footer(examples);
  app.callback([&parsed, &command] { parsed.command = &command; });
}

}  // namespace

ParsedCommandLine ParseCommandLine(const std::vector<std::string>& arguments) {
  ParsedCommandLine parsed;
  CLI::App program("Shows and steers what the Dozewell service does with this machine.",
                   kProgramName);
  AddCommonOptions(program, kProgramName);
  program.footer(kFooter + ExplainsACommand(kProgramName));
  for (const Command& command : Commands()) AddCommand(program, command, parsed);

  try {
    parsed.help = TakeArguments(program, arguments);
  } catch (const CLI::ParseError& error) {
    throw CommandFailure(ExitCode::Usage, error.what());
  }
  if (!parsed.help.empty()) {
    parsed.command = nullptr;
  } else if (parsed.command == nullptr) {
    const auto groups = program.get_subcommands();
    const std::string asked = groups.empty() ? "" : " " + groups.front()->get_name();
    throw CommandFailure(ExitCode::Usage,
                         std::string("no command; ") + kProgramName + asked + " --help lists them");
  }
  return parsed;
}

}  // namespace dozewell::ctl
