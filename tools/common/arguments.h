#ifndef DOZEWELL_COMMON_ARGUMENTS_H_
#define DOZEWELL_COMMON_ARGUMENTS_H_

#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace dozewell {

// Adds --help and --version, and makes command lines mean the same on every system.
void AddCommonOptions(CLI::App& program, const char* programName);

// Adds an argument or option whose text goes into `text`.
void AddText(CLI::App& app, const char* name, const char* placeholder, const char* description,
             bool required, std::optional<std::string>& text);

// Parses the arguments, which are in UTF-8 and without the program's name. Returns the text to
// print for --help or --version, even if other arguments are wrong, and otherwise an empty text.
// Throws CLI::ParseError for arguments that make no sense.
std::string TakeArguments(CLI::App& program, const std::vector<std::string>& arguments);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_ARGUMENTS_H_
