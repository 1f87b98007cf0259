#include <windows.h>

#include "ctl/terminal.h"

namespace dozewell::ctl {

bool InputIsTerminal() {
  DWORD mode = 0;
  return GetConsoleMode(GetStdHandle(STD_INPUT_HANDLE), &mode) != 0;
}

}  // namespace dozewell::ctl
