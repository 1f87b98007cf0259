#include "replay/replay_error.h"

#include <cerrno>
#include <system_error>

namespace dozewell {

std::string WithReason(std::string what) {
  const int reason = errno;
  if (reason != 0) what += ": " + std::generic_category().message(reason);
  return what;
}

}  // namespace dozewell
