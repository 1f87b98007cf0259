#include "common/arguments.h"

#include <CLI/CLI.hpp>

namespace dozewell {

void AddCommonOptions(CLI::App& program, const char* programName) {
  program.set_help_flag("--help", "Explain the options");
  program.set_version_flag("--version", std::string(programName) + " " + DOZEWELL_VERSION,
                           "Print the version");
  program.allow_windows_style_options(false);
  program.require_subcommand(0, 1);
  program.get_formatter()->label("SUBCOMMAND", "COMMAND");
}

void AddText(CLI::App& app, const char* name, const char* placeholder, const char* description,
             bool required, std::optional<std::string>& text) {
  // Stored as it stands: CLI11 would interpret some texts if it were given the variable itself.
  app.add_option_function<std::string>(
         name, [&text](const std::string& given) { text = given; }, description)
      ->type_name(placeholder)
      ->required(required);
}

std::string TakeArguments(CLI::App& program, const std::vector<std::string>& arguments) {
  try {
    program.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
  } catch (const CLI::CallForHelp&) {
    return program.help();
  } catch (const CLI::CallForVersion&) {
    return program.version() + "\n";
  }
  return {};
}

}  // namespace dozewell
