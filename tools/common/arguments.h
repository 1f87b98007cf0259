#ifndef DOZEWELL_COMMON_ARGUMENTS_H_
#define DOZEWELL_COMMON_ARGUMENTS_H_

#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace dozewell {

// What all our programs have alike: --help, --version, and the same command lines on every system.
void AddCommonOptions(CLI::App& program, const char* programName);

// Adds an argument or option whose text goes into `text`.
void AddText(CLI::App& app, const char* name, const char* placeholder, const char* description,
             bool required, std::optional<std::string>& text);

// Has the program take the arguments, in UTF-8 and without its name. Returns the text that they ask
// for with --help or --version, which count whatever else is wrong; otherwise nothing. Throws
// CLI::ParseError for arguments that make no sense.
std::string TakeArguments(CLI::App& program, const std::vector<std::string>& arguments);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_ARGUMENTS_H_
