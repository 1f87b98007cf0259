#ifndef DOZEWELL_CTL_CTL_H_
#define DOZEWELL_CTL_CTL_H_

#include <string>
#include <vector>

#include "ctl/command.h"

namespace dozewell::ctl {

// Runs the command that the arguments, in UTF-8 and without the program's name, ask for. Errors go
// to the console as messages. Returns the program's exit code.
int RunCtl(const std::vector<std::string>& arguments, const Console& console);

// The console that the program was started in.
Console StandardConsole();

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_CTL_H_
