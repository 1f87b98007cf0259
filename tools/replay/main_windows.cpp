#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "base/utf8.h"
#include "replay/replay.h"

namespace {

// Switches the console to colours, which it has to be told to show.
bool SwitchColoursOn() {
  const HANDLE console = GetStdHandle(STD_OUTPUT_HANDLE);
  DWORD mode = 0;
  return GetConsoleMode(console, &mode) != 0 &&
         SetConsoleMode(console, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

bool MessagesGoToConsole() {
  DWORD mode = 0;
  return GetConsoleMode(GetStdHandle(STD_ERROR_HANDLE), &mode) != 0;
}

}  // namespace

extern "C" int wmain(int argc, wchar_t** argv) {
  // Line feeds stay as they are: the output is the same on every system.
  _setmode(_fileno(stdout), _O_BINARY);
  _setmode(_fileno(stderr), _O_BINARY);
  std::vector<std::string> arguments;
  for (int i = 1; i < argc; ++i) arguments.push_back(dozewell::NarrowToUtf8(argv[i]));
  const wchar_t* noColour = _wgetenv(L"NO_COLOR");
  const bool colour = (noColour == nullptr || *noColour == L'\0') && SwitchColoursOn();
  return dozewell::replay::RunReplay(arguments, {colour, MessagesGoToConsole()});
}
