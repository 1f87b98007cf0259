#include <cctype>

#include "common/version.h"
#include "manual/documents.h"
#include "manual/syntax_words.h"

namespace dozewell::manual {
namespace {

// Text in which nothing is taken for a request or an escape.
std::string Plain(std::string_view text) {
  std::string plain;
  bool lineBegins = true;
  for (const char c : text) {
    if (lineBegins && (c == '.' || c == '\'')) plain += "\\&";
    lineBegins = c == '\n';
    switch (c) {
      case '\\':
        plain += "\\e";
        break;
      case '-':
        plain += "\\-";
        break;
      case '^':
        plain += "\\(ha";
        break;
      case '~':
        plain += "\\(ti";
        break;
      case '"':
        plain += "\\(dq";
        break;
      default:
        plain += c;
    }
  }
  return plain;
}

std::string InCapitals(std::string_view text) {
  std::string capitals(text);
  for (char& c : capitals) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return capitals;
}

// Text whose lines stay as they are.
std::string Lines(std::string_view text) {
  while (text.starts_with('\n')) text.remove_prefix(1);
  while (text.ends_with('\n')) text.remove_suffix(1);
  if (text.empty()) return {};
  return ".nf\n" + Plain(text) + "\n.fi\n";
}

std::string Tagged(const std::string& tag, std::string_view description) {
  return ".TP\n" + tag + "\n" + Plain(description) + "\n";
}

// What stands behind the command: SOURCE [VALUE] --out FILE.
std::string Heading(const CommandSyntax& command) {
  std::string heading = Plain(command.name);
  for (const ValueSyntax& value : command.values) {
    const std::string shown =
        IsOption(value) ? std::string(value.name) + " " + value.placeholder : value.name;
    heading += " " + Plain(value.required ? shown : "[" + shown + "]");
  }
  for (const FlagSyntax& flag : command.flags)
    heading += " " + Plain("[" + std::string(flag.name) + "]");
  if (command.list) heading += " " + Plain(command.list->name) + " ...";
  return heading;
}

std::string SectionOf(const CommandSyntax& command) {
  std::string section = ".SS " + Heading(command) + "\n" + Plain(command.description) + ".\n";
  for (const ValueSyntax& value : command.values) {
    std::string tag = "\\fB" + Plain(value.name) + "\\fR";
    if (IsOption(value)) tag += " \\fI" + Plain(value.placeholder) + "\\fR";
    section += Tagged(tag, value.description);
  }
  for (const FlagSyntax& flag : command.flags)
    section += Tagged("\\fB" + Plain(flag.name) + "\\fR", flag.description);
  if (command.list) {
    section += Tagged("\\fI" + Plain(command.list->name) + "\\fR ...", command.list->description);
  }
  return section + ".PP\n" + Lines(FooterOfHelp(command));
}

}  // namespace

std::string ManPage(const ProgramSyntax& syntax, std::string_view date, std::string_view related) {
  const std::string name = Plain(syntax.name);
  std::string what = syntax.description;
  if (what.ends_with('.')) what.pop_back();
  what[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(what[0])));
  std::string page = ".TH " + Plain(InCapitals(syntax.name)) + " 1 " + std::string(date) +
                     " \"Dozewell " + kVersion + "\" Dozewell\n";
  page += ".SH NAME\n" + name + " \\- " + Plain(what) + "\n";
  page += ".SH SYNOPSIS\n.B " + name + "\n.I COMMAND\n.RI [ ARGUMENT ...]\n";
  page += ".SH OPTIONS\n";
  page += Tagged("\\fB\\-h\\fR, \\fB\\-\\-help\\fR",
                 "Explain the program or, behind a command, the command.");
  page += Tagged("\\fB\\-\\-version\\fR", "Print the version.");
  page += ".SH COMMANDS\n";
  for (const CommandSyntax& command : syntax.commands) page += SectionOf(command);
  page += ".SH NOTES\n" + Lines(syntax.footer);
  page += ".SH SEE ALSO\n.BR " + Plain(related) + " (1)\n";
  return page;
}

}  // namespace dozewell::manual
