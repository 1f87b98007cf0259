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
