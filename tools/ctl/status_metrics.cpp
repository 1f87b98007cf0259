#include "ctl/status_metrics.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <vector>

#include "common/version.h"
#include "ctl/metrics_text.h"
#include "service/service_host.h"

namespace dozewell::ctl {
namespace {

std::optional<int64_t> IsRunning(const ServiceQuery& service) {
  if (service.error == kErrorServiceMissing) return 0;
  if (service.error != 0) return std::nullopt;
  return service.state == kServiceRunning ? 1 : 0;
}

// A sample for each state that the controller may be expected in, of which one is 1.
std::vector<Sample> ControllerSamples(Expected runs) {
  const auto sample = [runs](const char* state, Expected expected) {
    return Sample{{"expected", state}, runs == expected ? "1" : "0"};
  };
  return {sample("no", Expected::No), sample("maybe", Expected::Maybe),
          sample("yes", Expected::Yes)};
}

std::vector<Sample> AbilitySamples(const MachineKind& machine) {
  const auto sample = [](const char* ability, std::optional<bool> has) {
    return Sample{{"ability", ability},
                  has ? std::optional<std::string>(*has ? "1" : "0") : std::nullopt};
  };
  const std::optional<PowerCapabilities>& can = machine.capabilities;
  const auto capability = [&can](bool (PowerCapabilities::*has)() const) {
    return can ? std::optional<bool>((*can.*has)()) : std::nullopt;
  };
  return {sample("sleep", capability(&PowerCapabilities::HasS3)),
          sample("hibernation", capability(&PowerCapabilities::HasS4)),
          sample("hibernation_file", capability(&PowerCapabilities::HasHibernationFile)),
          sample("modern_standby", capability(&PowerCapabilities::HasModernStandby)),
          sample("fast_startup", StartsFast(machine)),
          sample("driver", machine.hasDriver),
          sample("windows_timer", machine.hasDriver ? std::optional<bool>(machine.windowsTimer ==
                                                                          WindowsTimer::Wakes)
                                                    : std::nullopt)};
}

// How much is known to keep the system's timer from waking the machine; nothing where another one
// does, or none.
std::optional<int64_t> CountOfLimits(const MachineKind& machine) {
  if (machine.windowsTimer == WindowsTimer::Unused) return std::nullopt;
  return static_cast<int64_t>(WindowsTimerLimits(machine).size());
}

// "hibernate_after_seconds".
std::string TimeoutName(const PowerSetting& timeout) {
  std::string name = timeout.name;
  std::ranges::replace(name, '-', '_');
  return name + "_seconds";
}

// The timeout that has this place in kPowerSettings, for each source.
std::vector<Sample> TimeoutSamples(const StatusReport& report, size_t place) {
  std::vector<Sample> samples;
  for (size_t i = 0; i < std::size(kSources); ++i) {
    const std::optional<uint32_t> minutes = report.power[i].values[place];
    std::optional<std::string> seconds;
    if (minutes) seconds = *minutes == 0 ? kInfinity : std::to_string(int64_t{*minutes} * 60);
    samples.push_back({{"source", kSources[i].name}, seconds});
  }
  return samples;
}

}  // namespace

std::string StatusMetrics(const StatusReport& report) {
  MetricsText metrics;
  metrics.Add("build_info", "The version of dozewellctl.",
              std::vector<Sample>{{{"version", kVersion}, "1"}});
  metrics.Add("up", "Whether the service answers.", report.ping.IsDone());
  metrics.Add("service_running", "Whether Windows says that the service runs.",
              IsRunning(report.service));
  metrics.Add("feature_enabled", "Whether the feature is on.", report.featureEnabled);
  metrics.Add("predictions_enabled", "Whether predictions are on: DisablePrediction is not 1.",
              report.predictionsEnabled);
  metrics.Add("controller", "Whether the controller is expected to run: one of these is 1.",
              ControllerSamples(report.controller.runs));
  metrics.Add("start_attempts", "Starts and resumes counted so far.", report.currentAttempt);
  metrics.Add("start_attempts_required", "How many only count before the controller starts.",
              report.totalAttempts);
  metrics.Add("machine_ability", "What the machine has.", AbilitySamples(report.machine));
  metrics.Add("wake_timers_forbidden", "Whether a policy forbids wake timers.",
              AreWakeTimersForbidden(report.machine));
  metrics.Add("hibernate_after_under_policy", "Whether a policy sets hibernate-after.",
              IsUnderPolicy(report.machine.hibernateAfter));
  metrics.Add("windows_timer_limits", "How many things may keep Windows' timer from waking it.",
              CountOfLimits(report.machine));
  metrics.Add("wake_timers_enabled", "Whether the wake timers are enabled.", report.driverEnabled);
  for (size_t i = 0; i < kPowerSettings.size(); ++i) {
    if (!kPowerSettings[i].values.empty()) continue;
    metrics.Add(TimeoutName(kPowerSettings[i]), "The power scheme's timeout; +Inf is never.",
                TimeoutSamples(report, i));
  }
  metrics.Add("strength", "Which of the optimizer's results is used.", report.strength);
  metrics.Add("strength_has_result", "Whether the optimizer has stored that result.",
              report.strengthHasResult);
  metrics.Add("last_search_timestamp_seconds", "When the optimizer last ran, since 1970 UTC.",
              report.lastOptimizerRun);
  return metrics.Text();
}

}  // namespace dozewell::ctl
