#ifndef DOZEWELL_REPLAY_REPLAY_ERROR_H_
#define DOZEWELL_REPLAY_REPLAY_ERROR_H_

#include <stdexcept>
#include <string>

namespace dozewell {

// What ends a command, as the one line that the user reads: which file, line or option, and what
// is wrong with it.
class ReplayError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// "<what>: <reason>", where the reason is what errno says. A call that fails without setting errno
// adds no reason, if the caller cleared errno before.
std::string WithReason(std::string what);

}  // namespace dozewell

#endif  // DOZEWELL_REPLAY_REPLAY_ERROR_H_
