#ifndef DOZEWELL_CTL_CHECK_TRY_TIMEOUTS_H_
#define DOZEWELL_CTL_CHECK_TRY_TIMEOUTS_H_

#include <functional>
#include <string>
#include <vector>

namespace dozewell::ctl {

// How long everything may take that the service does at a suspend.
inline constexpr double kSuspendMilliseconds = 2000;

// A step of what the service does to the power scheme at a suspend.
struct TriedStep {
  std::string name;
  double milliseconds;
  bool isDone;
};

struct TriedTimeouts {
  std::string refusal;  // why not all steps were made; empty when they were
  std::vector<TriedStep> steps;

  double Milliseconds() const;
  // All steps were made, and none failed.
  bool IsDone() const;
};

// Reads the hibernate-after timeout for each power source and writes the same value back, in the
// service's order; no other value is ever written. It writes nothing while a user's own timeout is
// cached, since the service may then put it back at any moment, and nothing more once the active
// scheme or the value has changed. `now` gives the milliseconds since any fixed moment.
TriedTimeouts TryTimeouts(const std::function<double()>& now);

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_CHECK_TRY_TIMEOUTS_H_
