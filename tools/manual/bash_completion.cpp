#include <algorithm>

#include "manual/documents.h"
#include "manual/syntax_words.h"

namespace dozewell::manual {
namespace {

// The beginning finds the command and how many of its arguments stand before the word that is being
// completed.
constexpr const char* kFindCommand =
    "  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}\n"
    "  local command=${COMP_WORDS[1]} first=2 words=\"\" place=0 i\n"
    "  COMPREPLY=()\n";
constexpr const char* kCountArguments =
    "  for ((i = first; i < COMP_CWORD; ++i)); do\n"
    "    [[ ${COMP_WORDS[i]} == -* ]] || ((++place))\n"
    "  done\n";
constexpr const char* kOffer = "mapfile -t COMPREPLY < <(compgen -W \"$words\" -- \"$current\")\n";
constexpr const char* kOfferAndReturn =
    "    mapfile -t COMPREPLY < <(compgen -W \"$words\" -- \"$current\")\n    return\n  fi\n";
constexpr const char* kOfferFiles =
    "      compopt -o filenames 2>/dev/null\n"
    "      mapfile -t COMPREPLY < <(compgen -f -- \"$current\")\n"
    "      return\n"
    "      ;;\n";

// The name of the script's function; a hyphen in it is no good style.
std::string FunctionOf(const ProgramSyntax& syntax) {
  std::string name = std::string("_") + syntax.name;
  std::ranges::replace(name, '-', '_');
  return name;
}

std::string Quoted(const std::string& text) { return "\"" + text + "\""; }

std::string Case(const std::string& pattern, const std::string& words) {
  return "    " + pattern + ") words=" + Quoted(words) + " ;;\n";
}

std::string FindGroup(const std::vector<Group>& groups) {
  if (groups.empty()) return {};
  std::string names;
  for (const Group& group : groups) names += (names.empty() ? "" : " | ") + group.name;
  return "  case $command in\n    " + names +
         ") command+=\" ${COMP_WORDS[2]:-}\" first=3 ;;\n  esac\n";
}

std::string WordsBeforeArguments(const ProgramSyntax& syntax, const std::vector<Group>& groups) {
  std::vector<std::string> first = FirstWords(syntax);
  first.insert(first.end(), std::begin(kHelpWords), std::end(kHelpWords));
  first.emplace_back(kVersionWord);
  std::string text =
      "  if ((COMP_CWORD == 1)); then\n    words=" + Quoted(Joined(first)) + "\n" + kOfferAndReturn;
  if (groups.empty()) return text;
  text += "  if ((COMP_CWORD < first)); then\n    case ${COMP_WORDS[1]} in\n";
  for (const Group& group : groups) text += "  " + Case(group.name, Joined(group.commands));
  return text + "    esac\n" + kOfferAndReturn;
}

// What an option before the word is given.
std::string ValuesOfOptions(const ProgramSyntax& syntax) {
  std::string files;
  std::string words;
  std::string others;
  for (const CommandSyntax& command : syntax.commands) {
    for (const ValueSyntax& value : command.values) {
      if (!IsOption(value)) continue;
      const std::string pattern = Quoted(command.name + " " + value.name);
      if (IsFile(value)) {
        files += (files.empty() ? "" : " | \\\n    ") + pattern;
      } else if (*value.words != '\0') {
        words += "    " + pattern + ")\n      words=" + Quoted(value.words) + "\n      " + kOffer +
                 "      return\n      ;;\n";
      } else {
        others += (others.empty() ? "" : " | \\\n    ") + pattern;
      }
    }
  }
  std::string text = "  case \"$command $previous\" in\n";
  if (!files.empty()) text += "    " + files + ")\n" + kOfferFiles;
  text += words;
  if (!others.empty()) text += "    " + others + ") return ;;\n";
  return text + "  esac\n";
}

// The options of the command, and the words of the argument whose place it is.
std::string WordsOfCommands(const ProgramSyntax& syntax) {
  std::string options;
  std::string arguments;
  for (const CommandSyntax& command : syntax.commands) {
    options += Case(Quoted(command.name), Joined(OptionsOf(command)));
    size_t place = 0;
    for (const ValueSyntax& value : command.values) {
      if (IsOption(value)) continue;
      if (*value.words != '\0') {
        arguments += "    " + Quoted(command.name + " " + std::to_string(place)) + ") words+=\" " +
                     value.words + "\" ;;\n";
      }
      ++place;
    }
  }
  std::string text = "  case $command in\n" + options + "  esac\n";
  if (!arguments.empty()) text += "  case \"$command $place\" in\n" + arguments + "  esac\n";
  return text;
}

}  // namespace

std::string BashCompletion(const ProgramSyntax& syntax) {
  const std::vector<Group> groups = GroupsOf(syntax);
  return std::string("# shellcheck shell=bash\n# Completes command lines of ") + syntax.name +
         " in bash. Written from what its --help is made of.\n\n" + FunctionOf(syntax) + "() {\n" +
         kFindCommand + FindGroup(groups) + WordsBeforeArguments(syntax, groups) + kCountArguments +
         ValuesOfOptions(syntax) + WordsOfCommands(syntax) + "  " + kOffer + "}\n\ncomplete -F " +
         FunctionOf(syntax) + " " + syntax.name + "\n";
}

}  // namespace dozewell::manual
