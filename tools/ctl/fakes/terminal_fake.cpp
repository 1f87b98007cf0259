#include "ctl/terminal.h"

namespace dozewell::ctl {

bool InputIsTerminal() { return false; }

}  // namespace dozewell::ctl
