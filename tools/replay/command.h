#ifndef DOZEWELL_REPLAY_COMMAND_H_
#define DOZEWELL_REPLAY_COMMAND_H_

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "common/machine_identity.h"

namespace dozewell::replay {

// What the user gave on the command line, as text. Options that a command requires are there when
// it runs.
struct Options {
  std::optional<std::string> history;
  std::optional<std::string> pending;
  std::optional<std::string> data;
  std::optional<std::string> settings;
  std::optional<std::string> out;
  std::optional<std::string> at;
  std::optional<std::string> now;
  std::optional<std::string> limit;
  std::optional<std::string> kind;
  std::optional<std::string> days;
  std::optional<std::string> seed;
  std::optional<std::string> hibernateAfter;
  std::optional<std::string> strength;
  std::optional<std::string> best;
  std::optional<std::string> eventLog;
  std::optional<std::string> zone;
  std::optional<std::string> predictor;
  std::optional<std::string> csv;
  std::optional<std::string> partial;
  std::optional<std::string> part;
  std::optional<std::string> groups;
  std::optional<std::string> wattsAsleep;
  std::optional<std::string> wattsHibernated;
  std::optional<std::string> price;
  std::optional<std::string> threads;
  std::optional<std::string> machine;
  std::vector<std::string> folders;
  bool json = false;
  bool timeLine = false;
  bool each = false;
  bool replace = false;
  bool noWake = false;
  bool resume = false;
  bool merge = false;
  bool canAsk = false;    // there is a terminal to ask the user on
  bool colour = false;    // the output goes to a terminal that shows colours
  bool progress = false;  // messages go to a terminal, which can show how far a command has come
};

// What a command prints.
struct Results {
  std::string output;                 // printed when the command succeeds
  std::vector<std::string> warnings;  // printed in any case, a line each
  // Keys that the settings file lacks although they have a default, which a file replaces.
  std::vector<std::string> missingSettings;
  // Whose data and settings they are; commands add what they learn of that.
  MachineIdentity identity;
};

// An option of the command line with a value.
struct CommandOption {
  const char* name;
  const char* placeholder;
  const char* description;
  std::optional<std::string> Options::*text;
  bool isOutput = false;   // names a file that is written
  const char* words = "";  // that it can be, with one blank between them; empty for anything
};

// An option without a value.
struct CommandFlag {
  const char* name;
  const char* description;
  bool Options::*given;
};

// One or more arguments without a name.
struct CommandList {
  const char* placeholder;
  const char* description;
  std::vector<std::string> Options::*texts;
};

struct Command {
  const char* name;
  const char* description;
  const char* example;  // what follows the program's name
  // Runs the command. Throws ToolError, and what the engine throws.
  void (*run)(const Options& options, Results& results);
  std::vector<const CommandOption*> required;
  std::vector<const CommandOption*> optional;
  std::vector<const CommandFlag*> flags;
  const char* details = "";  // more help, after the example
  const CommandList* list = nullptr;
};

// All commands, in the order of the help.
std::span<const Command> Commands();

}  // namespace dozewell::replay

#endif  // DOZEWELL_REPLAY_COMMAND_H_
