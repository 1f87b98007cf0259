#include <algorithm>

#include "manual/documents.h"
#include "manual/syntax_words.h"

namespace dozewell::manual {
namespace {

constexpr const char* kFindWords =
    "    $words = @($commandAst.CommandElements | Select-Object -Skip 1 |\n"
    "        ForEach-Object { $_.ToString() })\n"
    "    # The word that is being completed is no part of what was typed before it.\n"
    "    if ($wordToComplete -ne '' -and $words.Count -gt 0) {\n"
    "        $words = @($words | Select-Object -First ($words.Count - 1))\n"
    "    }\n"
    "    $plain = @($words | Where-Object { $_ -notlike '-*' })\n"
    "    $command = $options.Keys | Where-Object { \"$($plain -join ' ') \".StartsWith(\"$_ \") } "
    "|\n"
    "        Sort-Object Length -Descending | Select-Object -First 1\n";
constexpr const char* kChooseWords =
    "    if ($words.Count -gt 0 -and $values.ContainsKey(\"$command $($words[-1])\")) {\n"
    "        $offered = $values[\"$command $($words[-1])\"]\n"
    "    } elseif ($command) {\n"
    "        $place = $plain.Count - $command.Split(' ').Count\n"
    "        $offered = @($values[\"$command $place\"]) + $options[$command]\n"
    "    } elseif ($plain.Count -eq 1 -and $groups.ContainsKey($plain[0])) {\n"
    "        $offered = $groups[$plain[0]]\n"
    "    } elseif ($plain.Count -eq 0) {\n"
    "        $offered = $first\n"
    "    } else {\n"
    "        $offered = @()\n"
    "    }\n"
    "    $offered | Where-Object { $_ -and $_.StartsWith($wordToComplete) } | ForEach-Object {\n"
    "        [System.Management.Automation.CompletionResult]::new($_, $_, 'ParameterValue', $_)\n"
    "    }\n";

std::string Quoted(std::string_view text) { return "'" + std::string(text) + "'"; }

// @('a', 'b'), of words with one blank between them.
std::string List(std::string_view words) {
  std::string list;
  while (!words.empty()) {
    const size_t end = std::min(words.find(' '), words.size());
    list += (list.empty() ? "" : ", ") + Quoted(words.substr(0, end));
    words.remove_prefix(std::min(end + 1, words.size()));
  }
  return "@(" + list + ")";
}

std::string Entry(const std::string& key, std::string_view words) {
  return "        " + Quoted(key) + " = " + List(words) + "\n";
}

std::string Table(const std::string& name, const std::string& entries) {
  return "    $" + name + " = @{\n" + entries + "    }\n";
}

std::string Tables(const ProgramSyntax& syntax) {
  std::string options;
  std::string values;
  for (const CommandSyntax& command : syntax.commands) {
    options += Entry(command.name, Joined(OptionsOf(command)));
    size_t place = 0;
    for (const ValueSyntax& value : command.values) {
      const std::string key = IsOption(value) ? value.name : std::to_string(place++);
      // Nothing is offered for any other value, and PowerShell then offers files.
      if (IsOption(value) || *value.words != '\0')
        values += Entry(command.name + " " + key, value.words);
    }
  }
  std::string groups;
  for (const Group& group : GroupsOf(syntax)) groups += Entry(group.name, Joined(group.commands));
  std::vector<std::string> first = FirstWords(syntax);
  first.insert(first.end(), std::begin(kHelpWords), std::end(kHelpWords));
  first.emplace_back(kVersionWord);
  return "    $first = " + List(Joined(first)) + "\n" + Table("groups", groups) +
         Table("options", options) + Table("values", values);
}

}  // namespace

std::string PowerShellCompletion(const ProgramSyntax& syntax) {
  return std::string("# Completes command lines of ") + syntax.name +
         " in PowerShell. Written from what its --help is made of.\n"
         "# It has not been run yet. Load it in a profile: . .\\" +
         syntax.name +
         ".completion.ps1\n\n"
         "Register-ArgumentCompleter -Native -CommandName " +
         Quoted(syntax.name) +
         " -ScriptBlock {\n"
         "    param($wordToComplete, $commandAst, $cursorPosition)\n" +
         Tables(syntax) + kFindWords + kChooseWords + "}\n";
}

}  // namespace dozewell::manual
