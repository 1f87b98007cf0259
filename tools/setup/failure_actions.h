#ifndef DOZEWELL_SETUP_FAILURE_ACTIONS_H_
#define DOZEWELL_SETUP_FAILURE_ACTIONS_H_

#include <cstdint>
#include <string>
#include <vector>

namespace dozewell::setup {

// What the system does when a service's process ends unexpectedly.
struct FailureActions {
  struct Action {
    uint32_t kind;  // as the system counts them
    uint32_t delayMs;

    bool operator==(const Action&) const = default;
  };

  uint32_t resetSeconds = 0;  // without a failure, after which the first action is next again
  std::vector<Action> actions;

  bool operator==(const FailureActions&) const = default;
};

// As a text, and back. Throws std::runtime_error when it is no such text.
std::wstring TextOf(const FailureActions& failures);
FailureActions FailureActionsOf(const std::wstring& text);

}  // namespace dozewell::setup

#endif  // DOZEWELL_SETUP_FAILURE_ACTIONS_H_
