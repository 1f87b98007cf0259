#ifndef DOZEWELL_COMMON_ARGUMENTS_H_
#define DOZEWELL_COMMON_ARGUMENTS_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace dozewell {

// What our programs understand on their command lines. Only arguments.cpp includes the library that
// reads them, since that takes the compiler longer than the rest of a program.

// An option with a value, or an argument that is known by its place.
struct ValueSyntax {
  const char* name;
  const char* placeholder;  // of the option's value; empty for an argument
  const char* description;
  bool required;
  std::optional<std::string>* text;  // gets what is given, as it stands
  // The words that it can be, with one blank between them; empty when it can be anything. They are
  // for completing a command line, and nothing is refused because of them.
  const char* words = "";
};

struct FlagSyntax {
  const char* name;
  const char* description;
  bool* given;
};

// One or more arguments that are known by their place, after or between the options.
struct ListSyntax {
  const char* name;
  const char* description;
  std::vector<std::string>* texts;  // gets them as they stand
};

struct CommandSyntax {
  std::string name;  // two words for a command within a group
  const char* description;
  std::string footer;  // of its help
  std::vector<ValueSyntax> values;
  std::vector<FlagSyntax> flags;
  std::optional<ListSyntax> list = std::nullopt;
};

struct ProgramSyntax {
  const char* name;
  const char* description;
  std::string footer;  // of its help, before the line that says how a command is explained
  std::vector<CommandSyntax> commands;
  const char* (*describeGroup)(std::string_view group) = nullptr;  // null without groups
};

// What the help of a command ends with: its footer, and how its values are given.
std::string FooterOfHelp(const CommandSyntax& command);

// What a command line asks for.
struct Request {
  size_t command = 0;  // its index; meaningless when there is a help text
  std::string help;    // the text to print for --help or --version
};

// Understands arguments, in UTF-8 and without the program's name, alike on every system. --help and
// --version count whatever else is wrong. Throws ToolError for arguments that make no sense.
Request TakeArguments(const ProgramSyntax& syntax, const std::vector<std::string>& arguments);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_ARGUMENTS_H_
