#include <fcntl.h>
#include <io.h>

#include <cstdio>
#include <string>
#include <vector>

#include "base/utf8.h"
#include "ctl/ctl.h"

extern "C" int wmain(int argc, wchar_t** argv) {
  // Line feeds stay as they are, as in all our programs.
  _setmode(_fileno(stdout), _O_BINARY);
  _setmode(_fileno(stderr), _O_BINARY);
  std::vector<std::string> arguments;
  for (int i = 1; i < argc; ++i) arguments.push_back(dozewell::NarrowToUtf8(argv[i]));
  return dozewell::ctl::RunCtl(arguments, dozewell::ctl::StandardConsole());
}
