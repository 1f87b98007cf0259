#include "common/messages.h"

#include <cerrno>
#include <cstdio>
#include <stdexcept>
#include <system_error>

#include "common/plain_text.h"

namespace dozewell {

std::string WithReason(std::string what) {
  const int reason = errno;
  if (reason != 0) what += ": " + std::generic_category().message(reason);
  return what;
}

void PrintMessage(const char* program, const std::string& message) {
  std::fprintf(stderr, "%s: %s\n", program, PlainText(message, '?').c_str());
}

void PrintOutput(const std::string& output) {
  errno = 0;
  if (std::fwrite(output.data(), 1, output.size(), stdout) != output.size() ||
      std::fflush(stdout) != 0) {
    throw std::runtime_error(WithReason("standard output: cannot be written"));
  }
}

}  // namespace dozewell
