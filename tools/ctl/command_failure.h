#ifndef DOZEWELL_CTL_COMMAND_FAILURE_H_
#define DOZEWELL_CTL_COMMAND_FAILURE_H_

#include <stdexcept>
#include <string>

namespace dozewell::ctl {

// What the program's exit code says.
enum class ExitCode {
  Done = 0,
  NotDone = 1,        // the service refused, or the machine lacks what the command needs
  Usage = 2,          // the command line makes no sense
  NotReachable = 3,   // the service does not answer
  NothingLearnt = 4,  // nothing is known of what the service has learnt
};

// An error that ends a command. Its message is the one line that the user reads.
class CommandFailure : public std::runtime_error {
 public:
  CommandFailure(ExitCode exitCode, const std::string& message)
      : std::runtime_error(message), exitCode_(exitCode) {}

  ExitCode Code() const { return exitCode_; }

 private:
  ExitCode exitCode_;
};

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_COMMAND_FAILURE_H_
