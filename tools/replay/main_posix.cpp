#include <unistd.h>

#include <cstdlib>

#include "replay/colours.h"
#include "replay/replay.h"

int main(int argc, char** argv) {
  const bool colour =
      isatty(STDOUT_FILENO) != 0 &&
      dozewell::replay::ColoursAreWanted(std::getenv("NO_COLOR"), std::getenv("TERM"));
  const bool messages = isatty(STDERR_FILENO) != 0;
  return dozewell::replay::RunReplay({argv + (argc > 0 ? 1 : 0), argv + argc},
                                     {colour, messages, messages && isatty(STDIN_FILENO) != 0});
}
