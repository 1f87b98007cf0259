#ifndef DOZEWELL_MANUAL_SYNTAX_WORDS_H_
#define DOZEWELL_MANUAL_SYNTAX_WORDS_H_

#include <string>
#include <vector>

#include "common/arguments.h"

namespace dozewell::manual {

// The words that a program's command lines are made of, for completing them.

inline constexpr const char* kHelpWords[] = {"-h", "--help"};
inline constexpr const char* kVersionWord = "--version";

struct Group {
  std::string name;
  std::vector<std::string> commands;  // their second words
};

// Words that may come first: commands and groups, each once.
std::vector<std::string> FirstWords(const ProgramSyntax& syntax);

std::vector<Group> GroupsOf(const ProgramSyntax& syntax);

// The options of a command, with those that all commands have.
std::vector<std::string> OptionsOf(const CommandSyntax& command);

bool IsOption(const ValueSyntax& value);
bool IsFile(const ValueSyntax& value);

// The words with one blank between them.
std::string Joined(const std::vector<std::string>& words);

}  // namespace dozewell::manual

#endif  // DOZEWELL_MANUAL_SYNTAX_WORDS_H_
