#ifndef DOZEWELL_CTL_COMMAND_H_
#define DOZEWELL_CTL_COMMAND_H_

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace dozewell::ctl {

// What the user gave on the command line, as text.
struct Options {
  std::optional<std::string> timer;
  std::optional<std::string> time;
  std::optional<std::string> duration;
  std::optional<std::string> source;
  std::optional<std::string> setting;
  std::optional<std::string> value;
  std::optional<std::string> scheme;
  std::optional<std::string> strength;
  std::optional<std::string> at;
  std::optional<std::string> out;
  std::optional<std::string> from;
  std::optional<std::string> file;
  std::optional<std::string> weeks;
  bool yes = false;
  bool tryWriting = false;
  bool metrics = false;
  bool anonymous = false;
  bool json = false;
};

// How a command talks to the user.
struct Console {
  std::function<void(const std::string& output)> print;
  std::function<void(const std::string& message)> warn;
  // Asks the user. True for yes.
  std::function<bool(const std::string& question)> confirm;
  // Whether a user sits at the other end, who sees a question before the answer is given.
  bool isTerminal;
};

// A positional argument of the command line, or an option with a value.
struct CommandArgument {
  const char* name;
  const char* placeholder;  // of the option's value; empty for an argument
  const char* description;
  std::optional<std::string> Options::*text;
  const char* words = "";  // that it can be, with one blank between them; empty for anything
};

struct Command {
  const char* name;  // of two words for a command within a group
  const char* description;
  std::vector<const char*> examples;  // what follows the program's name
  // Runs the command. Throws CommandFailure, and what the engine throws.
  void (*run)(const Options& options, const Console& console);
  std::vector<const CommandArgument*> required;
  std::vector<const CommandArgument*> optional;
  bool takesYes = false;
  bool takesTry = false;
  bool takesMetrics = false;
  bool takesAnonymous = false;
};

// All commands, in the order of the help.
std::span<const Command> Commands();

// The description of the commands whose names begin with this word.
const char* GroupDescription(std::string_view group);

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_COMMAND_H_
