#include <windows.h>

#include <cstdlib>

#include "common/program_start.h"
#include "replay/colours.h"
#include "replay/replay.h"

namespace {

// Switches the console to colours, which it has to be told to show.
bool SwitchColoursOn() {
  const HANDLE console = GetStdHandle(STD_OUTPUT_HANDLE);
  DWORD mode = 0;
  return GetConsoleMode(console, &mode) != 0 &&
         SetConsoleMode(console, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

bool IsConsole(DWORD stream) {
  DWORD mode = 0;
  return GetConsoleMode(GetStdHandle(stream), &mode) != 0;
}

}  // namespace

extern "C" int wmain(int argc, wchar_t** argv) {
  const auto arguments = dozewell::StartProgram(argc, argv);
  const bool colour =
      dozewell::replay::ColoursAreWanted(std::getenv("NO_COLOR"), std::getenv("TERM")) &&
      SwitchColoursOn();
  const bool messages = IsConsole(STD_ERROR_HANDLE);
  return dozewell::replay::RunReplay(arguments,
                                     {colour, messages, messages && IsConsole(STD_INPUT_HANDLE)});
}
