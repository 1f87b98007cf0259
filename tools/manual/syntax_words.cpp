#include "manual/syntax_words.h"

#include <algorithm>
#include <string_view>

namespace dozewell::manual {

std::vector<std::string> FirstWords(const ProgramSyntax& syntax) {
  std::vector<std::string> words;
  for (const CommandSyntax& command : syntax.commands) {
    const std::string word = command.name.substr(0, command.name.find(' '));
    if (std::ranges::find(words, word) == words.end()) words.push_back(word);
  }
  return words;
}

std::vector<Group> GroupsOf(const ProgramSyntax& syntax) {
  std::vector<Group> groups;
  for (const CommandSyntax& command : syntax.commands) {
    const size_t blank = command.name.find(' ');
    if (blank == std::string::npos) continue;
    const std::string name = command.name.substr(0, blank);
    auto group = std::ranges::find(groups, name, &Group::name);
    if (group == groups.end()) group = groups.insert(groups.end(), Group{name, {}});
    group->commands.push_back(command.name.substr(blank + 1));
  }
  return groups;
}

std::vector<std::string> OptionsOf(const CommandSyntax& command) {
  std::vector<std::string> options;
  for (const ValueSyntax& value : command.values) {
    if (IsOption(value)) options.emplace_back(value.name);
  }
  for (const FlagSyntax& flag : command.flags) options.emplace_back(flag.name);
  options.insert(options.end(), std::begin(kHelpWords), std::end(kHelpWords));
  return options;
}

bool IsOption(const ValueSyntax& value) { return value.name[0] == '-'; }

bool IsFile(const ValueSyntax& value) { return std::string_view(value.placeholder) == "FILE"; }

std::string Joined(const std::vector<std::string>& words) {
  std::string joined;
  for (const std::string& word : words) joined += (joined.empty() ? "" : " ") + word;
  return joined;
}

}  // namespace dozewell::manual
