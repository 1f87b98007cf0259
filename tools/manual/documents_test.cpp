#include "manual/documents.h"

#include <doctest/doctest.h>

#include "common/version.h"

namespace dozewell::manual {
namespace {

// A program with a command of its own, one in a group, and each kind of value.
ProgramSyntax Example() {
  ProgramSyntax syntax = {"milk-maid", "Keeps cows.", "Example:\n  milk-maid feed\n", {}};
  CommandSyntax feed = {"feed", "Feed a cow", "Example:\n  milk-maid feed --hay FILE", {}, {}};
  feed.values.push_back({"--hay", "FILE", "What \"hay\" there is", true, nullptr});
  feed.values.push_back({"--kind", "KIND", "red or black", false, nullptr, "red black"});
  feed.values.push_back({"--at", "HOUR", ".5 or later", false, nullptr});
  feed.flags.push_back({"--json", "Print JSON", nullptr});
  CommandSyntax open = {"gate open", "Open a gate", "", {}, {}};
  open.values.push_back({"GATE", "", "front or back", true, nullptr, "front back"});
  syntax.commands = {feed, open};
  return syntax;
}

}  // namespace

TEST_CASE("A manual page has all commands, and nothing in it is taken for a request") {
  CHECK(ManPage(Example(), "2026-11-22", "cow") ==
        ".TH MILK\\-MAID 1 2026-11-22 \"Dozewell " + std::string(kVersion) +
            "\" Dozewell\n"
            ".SH NAME\nmilk\\-maid \\- keeps cows\n"
            ".SH SYNOPSIS\n.B milk\\-maid\n.I COMMAND\n.RI [ ARGUMENT ...]\n"
            ".SH OPTIONS\n"
            ".TP\n\\fB\\-h\\fR, \\fB\\-\\-help\\fR\n"
            "Explain the program or, behind a command, the command.\n"
            ".TP\n\\fB\\-\\-version\\fR\nPrint the version.\n"
            ".SH COMMANDS\n"
            ".SS feed \\-\\-hay FILE [\\-\\-kind KIND] [\\-\\-at HOUR] [\\-\\-json]\nFeed a cow.\n"
            ".TP\n\\fB\\-\\-hay\\fR \\fIFILE\\fR\nWhat \\(dqhay\\(dq there is\n"
            ".TP\n\\fB\\-\\-kind\\fR \\fIKIND\\fR\nred or black\n"
            ".TP\n\\fB\\-\\-at\\fR \\fIHOUR\\fR\n\\&.5 or later\n"
            ".TP\n\\fB\\-\\-json\\fR\nPrint JSON\n"
            ".PP\n.nf\nExample:\n  milk\\-maid feed \\-\\-hay FILE\n\n"
            "FILE may be \\-, which is standard input or output.\n.fi\n"
            ".SS gate open GATE\nOpen a gate.\n"
            ".TP\n\\fBGATE\\fR\nfront or back\n"
            ".PP\n"
            ".SH NOTES\n.nf\nExample:\n  milk\\-maid feed\n.fi\n"
            ".SH SEE ALSO\n.BR cow (1)\n");
}

TEST_CASE("A completion for bash offers commands, options, and words that a value can be") {
  const std::string script = BashCompletion(Example());
  for (const char* part :
       {"_milk_maid() {", "complete -F _milk_maid milk-maid\n", "    gate) command+=",
        "words=\"feed gate -h --help --version\"", "      gate) words=\"open\" ;;",
        "    \"feed --hay\")\n", "    \"feed --kind\")\n      words=\"red black\"\n",
        "    \"feed --at\") return ;;\n", "\"feed\") words=\"--hay --kind --at --json -h --help\"",
        "\"gate open 0\") words+=\" front back\" ;;"}) {
    CAPTURE(part);
    CHECK(script.find(part) != std::string::npos);
  }
}

TEST_CASE("A completion for PowerShell has the same words") {
  const std::string script = PowerShellCompletion(Example());
  for (const char* part :
       {"-CommandName 'milk-maid'", "$first = @('feed', 'gate', '-h', '--help', '--version')\n",
        "'gate' = @('open')\n", "'feed --hay' = @()\n", "'feed --kind' = @('red', 'black')\n",
        "'feed' = @('--hay', '--kind', '--at', '--json', '-h', '--help')\n",
        "'gate open 0' = @('front', 'back')\n"}) {
    CAPTURE(part);
    CHECK(script.find(part) != std::string::npos);
  }
}

}  // namespace dozewell::manual
