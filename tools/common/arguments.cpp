#include "common/arguments.h"

#include <CLI/CLI.hpp>

#include "common/tool_error.h"

namespace dozewell {
namespace {

constexpr const char* kGroupOfCommands = "Commands";

std::string ExplainsACommand(const std::string& prefix) {
  return prefix + " COMMAND --help explains a command.";
}

void AddValue(CLI::App& app, const ValueSyntax& value) {
  // Stored as it stands: CLI11 would interpret some texts if it were given the variable itself.
  app.add_option_function<std::string>(
         value.name, [&value](const std::string& text) { *value.text = text; }, value.description)
      ->type_name(value.placeholder)
      ->required(value.required);
}

CLI::App& FindOrAddGroup(CLI::App& program, const ProgramSyntax& syntax, const std::string& name) {
  const auto found =
      program.get_subcommands([&name](CLI::App* app) { return app->get_name() == name; });
  if (!found.empty()) return *found.front();
  CLI::App& group = *program.add_subcommand(name, syntax.describeGroup(name));
  group.group(kGroupOfCommands);
  group.footer(ExplainsACommand(std::string(syntax.name) + " " + name));
  group.require_subcommand(0, 1);
  return group;
}

// Puts the command in its group, if it is in one.
CLI::App& AddByName(CLI::App& program, const ProgramSyntax& syntax, const CommandSyntax& command) {
  const size_t blank = command.name.find(' ');
  if (blank == std::string::npos) return *program.add_subcommand(command.name, command.description);
  return *FindOrAddGroup(program, syntax, command.name.substr(0, blank))
              .add_subcommand(command.name.substr(blank + 1), command.description);
}

void SetUp(CLI::App& program, const ProgramSyntax& syntax) {
  program.set_help_flag("--help", "Explain the options");
  program.set_version_flag("--version", std::string(syntax.name) + " " + DOZEWELL_VERSION,
                           "Print the version");
  program.allow_windows_style_options(false);
  program.require_subcommand(0, 1);
  program.get_formatter()->label("SUBCOMMAND", "COMMAND");
  program.footer(syntax.footer + ExplainsACommand(syntax.name));
}

// The text that is asked for, if any. Throws CLI::ParseError.
std::string Parse(CLI::App& program, const std::vector<std::string>& arguments) {
  try {
    program.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
  } catch (const CLI::CallForHelp&) {
    return program.help();
  } catch (const CLI::CallForVersion&) {
    return program.version() + "\n";
  }
  return {};
}

std::string NoCommand(const CLI::App& program) {
  const auto groups = program.get_subcommands();
  const std::string asked = groups.empty() ? "" : " " + groups.front()->get_name();
  return "no command; " + program.get_name() + asked + " --help lists them";
}

}  // namespace

Request TakeArguments(const ProgramSyntax& syntax, const std::vector<std::string>& arguments) {
  CLI::App program(syntax.description, syntax.name);
  SetUp(program, syntax);
  std::optional<size_t> chosen;
  for (size_t i = 0; i < syntax.commands.size(); ++i) {
    const CommandSyntax& command = syntax.commands[i];
    CLI::App& app = AddByName(program, syntax, command);
    for (const ValueSyntax& value : command.values) AddValue(app, value);
    for (const FlagSyntax& flag : command.flags)
      app.add_flag(flag.name, *flag.given, flag.description);
    app.group(kGroupOfCommands);
    app.footer(command.footer);
    app.callback([&chosen, i] { chosen = i; });
  }
  Request request;
  try {
    request.help = Parse(program, arguments);
  } catch (const CLI::ParseError& error) {
    throw ToolError(error.what());
  }
  if (request.help.empty() && !chosen) throw ToolError(NoCommand(program));
  request.command = chosen.value_or(0);
  return request;
}

}  // namespace dozewell
