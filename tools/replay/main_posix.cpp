#include <unistd.h>

#include <cstdlib>

#include "replay/replay.h"

int main(int argc, char** argv) {
  const char* noColour = std::getenv("NO_COLOR");
  const bool colour = isatty(STDOUT_FILENO) != 0 && (noColour == nullptr || *noColour == '\0');
  const bool messages = isatty(STDERR_FILENO) != 0;
  return dozewell::replay::RunReplay({argv + (argc > 0 ? 1 : 0), argv + argc},
                                     {colour, messages, messages && isatty(STDIN_FILENO) != 0});
}
