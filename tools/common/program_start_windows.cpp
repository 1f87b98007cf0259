#include <fcntl.h>
#include <io.h>

#include <cstdio>

#include "base/utf8.h"
#include "common/program_start.h"

namespace dozewell {

std::vector<std::string> StartProgram(int argc, wchar_t** argv) {
  _setmode(_fileno(stdin), _O_BINARY);
  _setmode(_fileno(stdout), _O_BINARY);
  _setmode(_fileno(stderr), _O_BINARY);
  std::vector<std::string> arguments;
  for (int i = 1; i < argc; ++i) arguments.push_back(NarrowToUtf8(argv[i]));
  return arguments;
}

}  // namespace dozewell
