#ifndef DOZEWELL_CTL_CONTROLLER_OUTLOOK_H_
#define DOZEWELL_CTL_CONTROLLER_OUTLOOK_H_

#include <cstdint>
#include <optional>
#include <string>

namespace dozewell::ctl {

// Signs that the service's controller runs or does not. No procedure tells it directly.
struct ControllerSigns {
  bool serviceAnswers;
  bool featureEnabled;
  std::optional<uint32_t> currentAttempt;
  std::optional<uint32_t> totalAttempts;
  bool everStarted;           // ServiceFeedback is not 0
  std::string engineProblem;  // why the engine cannot be built; empty when it can
};

enum class Expected { No, Maybe, Yes };

struct ControllerOutlook {
  Expected runs;
  std::string why;
};

ControllerOutlook ExpectController(const ControllerSigns& signs);

// The attempts as "3 of 10" with what they mean.
std::string AttemptsText(const std::optional<uint32_t>& current,
                         const std::optional<uint32_t>& total);

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_CONTROLLER_OUTLOOK_H_
