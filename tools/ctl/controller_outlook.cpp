#include "ctl/controller_outlook.h"

#include "base/utf8.h"
#include "settings/setting_names.h"

namespace dozewell::ctl {

ControllerOutlook ExpectController(const ControllerSigns& signs) {
  if (!signs.serviceAnswers) return {Expected::No, "the service does not answer"};
  if (!signs.featureEnabled) return {Expected::No, "the feature is off"};
  if (!signs.engineProblem.empty()) {
    // A controller that was started with other settings still runs.
    return {Expected::Maybe,
            "only if it was started earlier, as it cannot be built now: " + signs.engineProblem};
  }
  if (!signs.currentAttempt || !signs.totalAttempts) {
    return {Expected::Maybe, "only if the feature was enabled since the service started"};
  }
  if (*signs.currentAttempt < *signs.totalAttempts) {
    return {Expected::No, "too few start attempts yet; dozewellctl enable starts it at once"};
  }
  // The attempt that brings the count to its total starts nothing yet.
  if (*signs.totalAttempts > 0 && !signs.everStarted) {
    return {Expected::Maybe, "at the latest from the next start attempt on"};
  }
  return {Expected::Yes, "the feature is on and enough start attempts were made"};
}

std::string AttemptsText(const std::optional<uint32_t>& current,
                         const std::optional<uint32_t>& total) {
  if (!current || !total) {
    return NarrowToUtf8(current ? kTotalAttemptsName : kCurrentAttemptName) +
           " is not set: the controller never starts by itself";
  }
  const std::string count = std::to_string(*current) + " of " + std::to_string(*total) + ": ";
  if (*current >= *total) return count + "the controller starts with the service";
  const uint32_t missing = *total - *current;
  return count + std::to_string(missing) +
         (missing == 1 ? " more start or resume only counts"
                       : " more starts or resumes only count");
}

}  // namespace dozewell::ctl
