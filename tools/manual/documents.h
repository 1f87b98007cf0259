#ifndef DOZEWELL_MANUAL_DOCUMENTS_H_
#define DOZEWELL_MANUAL_DOCUMENTS_H_

#include <string>
#include <string_view>

#include "common/arguments.h"

namespace dozewell::manual {

// What is written of a program from the tables that its --help is made of.

// The manual page, in the language of man(7). The date is that of the page, "2026-11-22"; the pages
// of `related`, another program, are named at the end.
std::string ManPage(const ProgramSyntax& syntax, std::string_view date, std::string_view related);

// A script that completes command lines in bash.
std::string BashCompletion(const ProgramSyntax& syntax);

// The same for PowerShell.
std::string PowerShellCompletion(const ProgramSyntax& syntax);

}  // namespace dozewell::manual

#endif  // DOZEWELL_MANUAL_DOCUMENTS_H_
