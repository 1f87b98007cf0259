#include "common/arguments.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <utility>

#include "common/tool_error.h"
#include "common/version.h"

namespace dozewell {
namespace {

constexpr const char* kGroupOfCommands = "Commands";
constexpr const char* kHelpOption = "--help";

// How the values are given that several options and arguments take. These have them as their
// placeholder or as their name.
struct ValueForm {
  std::string_view value;
  const char* description;
};
constexpr std::string_view kFile = "FILE";
constexpr ValueForm kValueForms[] = {
    {"TIME",
     "TIME is a local time \"YYYY-MM-DD HH:MM\", with seconds if wanted and with a T for the "
     "blank\n"
     "if wanted, or UTC seconds since 1970."},
    {"DURATION", "DURATION is minutes, or has units: 45m, 3h, 1h30m, \"2d 3h\"."},
    {kFile, "FILE may be -, which is standard input or output."},
};

std::string ExplainsACommand(const std::string& prefix) {
  return prefix + " COMMAND --help explains a command.";
}

bool Takes(const ValueSyntax& value, std::string_view form) {
  return form == (*value.placeholder == '\0' ? value.name : value.placeholder);
}

std::string FormsOfValues(const CommandSyntax& command) {
  std::string forms;
  for (const auto& [form, description] : kValueForms) {
    if (std::ranges::any_of(command.values, [form = form](const ValueSyntax& value) {
          return Takes(value, form);
        })) {
      forms += std::string("\n") + description;
    }
  }
  return forms.empty() ? "" : "\n" + forms;
}

// The option or argument of the library for a value of ours.
struct AddedValue {
  const CLI::Option* option;
  const ValueSyntax* value;
};

AddedValue AddValue(CLI::App& app, const ValueSyntax& value) {
  // Stored as it stands: CLI11 would interpret some texts if it were given the variable itself.
  CLI::Option* const option = app.add_option_function<std::string>(
      value.name, [&value](const std::string& text) { *value.text = text; }, value.description);
  option->type_name(value.placeholder)->required(value.required);
  // RequireSensible says in plain words that there are several.
  option->take_last();
  return {option, &value};
}

void AddList(CLI::App& app, const ListSyntax& list) {
  app.add_option_function<std::vector<std::string>>(
         list.name, [&list](const std::vector<std::string>& texts) { *list.texts = texts; },
         list.description)
      ->type_name("")
      ->required()
      ->expected(-1);
}

void RequireSensible(const AddedValue& added) {
  const auto& [option, value] = added;
  if (option->count() > 1) throw ToolError(std::string(value->name) + ": given more than once");
  if (*value->text == "" && Takes(*value, kFile)) {
    throw ToolError(std::string(value->name) + ": the name is empty");
  }
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
  program.set_help_flag("-h,--help", "Explain the options");
  program.set_version_flag("--version", std::string(syntax.name) + " " + kVersion,
                           "Print the version");
  program.allow_windows_style_options(false);
  program.require_subcommand(0, 1);
  program.get_formatter()->label("SUBCOMMAND", "COMMAND");
  program.footer(syntax.footer + ExplainsACommand(syntax.name));
}

// The arguments with --help for other ways to ask for it: "help learn" and "learn /?".
std::vector<std::string> AskingAlike(std::vector<std::string> arguments) {
  std::ranges::replace(arguments, "/?", kHelpOption);
  if (!arguments.empty() && arguments.front() == "help") {
    arguments.erase(arguments.begin());
    arguments.emplace_back(kHelpOption);
  }
  return arguments;
}

// Throws ToolError with the arguments that nothing was expected to be.
void RequireNoneLeft(const CLI::App& program) {
  const std::vector<std::string> left = program.remaining(/*recurse=*/true);
  if (left.empty()) return;
  std::string words;
  for (const std::string& word : left) words += ' ' + (word.empty() ? "\"\"" : word);
  throw ToolError((left.size() == 1 ? "The following argument was not expected:"
                                    : "The following arguments were not expected:") +
                  words);
}

// The text that is asked for, if any. Throws CLI::ParseError.
std::string Parse(CLI::App& program, std::vector<std::string> arguments) {
  try {
    // The library takes them from the end.
    std::ranges::reverse(arguments);
    program.parse(std::move(arguments));
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

std::string FooterOfHelp(const CommandSyntax& command) {
  return command.footer + FormsOfValues(command);
}

Request TakeArguments(const ProgramSyntax& syntax, const std::vector<std::string>& arguments) {
  CLI::App program(syntax.description, syntax.name);
  SetUp(program, syntax);
  std::optional<size_t> chosen;
  std::vector<AddedValue> values;
  for (size_t i = 0; i < syntax.commands.size(); ++i) {
    const CommandSyntax& command = syntax.commands[i];
    CLI::App& app = AddByName(program, syntax, command);
    for (const ValueSyntax& value : command.values) values.push_back(AddValue(app, value));
    for (const FlagSyntax& flag : command.flags)
      app.add_flag(flag.name, *flag.given, flag.description);
    if (command.list) AddList(app, *command.list);
    app.group(kGroupOfCommands);
    app.footer(FooterOfHelp(command));
    app.callback([&chosen, i] { chosen = i; });
  }
  Request request;
  try {
    request.help = Parse(program, AskingAlike(arguments));
  } catch (const CLI::ParseError& error) {
    // A misspelt option comes first: a required one is missing because of it.
    RequireNoneLeft(program);
    throw ToolError(error.what());
  }
  if (!request.help.empty()) return request;
  if (!chosen) throw ToolError(NoCommand(program));
  std::ranges::for_each(values, RequireSensible);
  request.command = *chosen;
  return request;
}

}  // namespace dozewell
