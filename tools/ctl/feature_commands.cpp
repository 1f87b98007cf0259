#include <chrono>
#include <cmath>

#include "common/format_text.h"
#include "common/json.h"
#include "ctl/command_failure.h"
#include "ctl/commands.h"
#include "ctl/disable_loss.h"
#include "ctl/live_engine.h"
#include "ctl/live_identity.h"
#include "ctl/require_done.h"
#include "ctl/service_calls.h"

namespace dozewell::ctl {
namespace {

constexpr const char* kNoDriver = "the service has no driver device, or the driver does not answer";

// The service has one answer for several failures; this finds out which one it was.
std::string WhyNotSwitched(bool enable) {
  if (enable) {
    const std::string problem = EngineProblem();
    if (!problem.empty()) return "the controller cannot be built: " + problem;
  }
  bool enabled = false;
  const CallResult feature = CallGetFeatureEnabled(enabled);
  RequireReachable(feature);
  if (!feature.IsDone() || enabled != enable) return "the service could not switch the feature";
  bool timersEnabled = false;
  const CallResult driver = CallGetDriverEnabled(timersEnabled);
  RequireReachable(driver);
  std::string why = driver.IsDone() ? "the driver did not take it" : kNoDriver;
  // The service starts the controller first and refuses if that fails, even if the feature is on.
  if (enable) why += ", or the controller could not be started";
  return std::string("the feature is ") + (enable ? "on" : "off") +
         " now, but the driver's timers were not switched: " + why;
}

// Asks before the service throws away what it has learnt. A service without a controller has
// nothing to lose.
void ConfirmLoss(const Options& options, const Console& console) {
  bool enabled = false;
  const CallResult feature = CallGetFeatureEnabled(enabled);
  RequireReachable(feature);
  if (options.yes || (feature.IsDone() && !enabled)) return;
  const std::string loss = DisableLossText();
  if (!console.isTerminal) {
    throw CommandFailure(ExitCode::Usage,
                         "disable asks first, and there is no terminal to ask at; --yes does not "
                         "ask. " +
                             loss);
  }
  if (!console.confirm(loss + " Go on?")) {
    throw CommandFailure(ExitCode::NotDone, "the feature stays on");
  }
}

void SwitchFeature(bool enable, const Options& options, const Console& console) {
  const CallResult result = CallSetFeatureEnabled(enable);
  if (result.outcome == CallOutcome::Refused) RequireDone(result, WhyNotSwitched(enable));
  RequireReachable(result);
  if (options.json) {
    console.print(LiveLine({{"featureEnabled", enable}}));
  } else {
    console.print(std::string("The feature is ") + (enable ? "on" : "off") + ".\n");
  }
}

}  // namespace

void RunEnable(const Options& options, const Console& console) {
  SwitchFeature(true, options, console);
}

void RunDisable(const Options& options, const Console& console) {
  ConfirmLoss(options, console);
  SwitchFeature(false, options, console);
}

void RunDriver(const Options& options, const Console& console) {
  bool enabled = false;
  RequireDone(CallGetDriverEnabled(enabled), kNoDriver);
  if (options.json) {
    console.print(LiveLine({{"driverEnabled", enabled}}));
  } else {
    console.print(std::string("The driver's wake timers are ") + (enabled ? "" : "not ") +
                  "enabled.\n");
  }
}

void RunPing(const Options& options, const Console& console) {
  // The first call makes the connection, whose time does not count.
  RequireDone(CallPing(), "the service answers, and says that it does not work");
  const auto start = std::chrono::steady_clock::now();
  RequireDone(CallPing(), "the service answers, and says that it does not work");
  const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - start;
  if (options.json) {
    console.print(LiveLine({{"milliseconds", JsonNumber(std::round(taken.count() * 100) / 100)}}));
  } else {
    console.print(FormatText("The service answers, in %.2f ms.\n", taken.count()));
  }
}

}  // namespace dozewell::ctl
