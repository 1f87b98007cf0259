#include "common/messages.h"

#include <cerrno>
#include <cstdio>
#include <stdexcept>
#include <system_error>

#include "common/plain_text.h"
#include "common/write_text.h"

namespace dozewell {

std::string WithReason(std::string what) {
  const int reason = errno;
  if (reason != 0) what += ": " + std::generic_category().message(reason);
  return what;
}

void PrintMessage(const char* program, const std::string& message) {
  WriteText(stderr, std::string(program) + ": " + PlainText(message, '?') + "\n");
}

void PrintOutput(const std::string& output) {
  errno = 0;
  if (!WriteText(stdout, output)) {
    throw std::runtime_error(WithReason("standard output: cannot be written"));
  }
}

}  // namespace dozewell
