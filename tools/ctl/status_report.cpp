#include "ctl/status_report.h"

#include "base/numbers.h"
#include "ctl/event_feed.h"
#include "ctl/live_engine.h"
#include "ctl/live_settings.h"
#include "power/driver_timer.h"
#include "settings/predictor_values.h"
#include "settings/setting_names.h"
#include "settings/settings_store.h"

namespace dozewell::ctl {
namespace {

constexpr size_t kEvents = 3;

// The output of a call; nothing unless the call was done.
template <typename Value, typename Call>
std::optional<Value> Ask(Call call) {
  Value value = {};
  return call(value).IsDone() ? std::optional(value) : std::nullopt;
}

void AskService(StatusReport& report) {
  report.featureEnabled = Ask<bool>(CallGetFeatureEnabled).value_or(ReadFeatureEnabled());
  report.scheme = Ask<uint32_t>(CallGetActiveScheme);
  for (size_t i = 0; i < report.power.size(); ++i) report.power[i] = ReadPower(kSources[i].number);
  report.driverEnabled = Ask<bool>(CallGetDriverEnabled);
  NoteWakeTimer(report.machine, report.driverEnabled.has_value());
  report.alarm = Ask<WakeTime>([](WakeTime& time) { return CallGetWakeTime(kAlarmWord, time); });
  report.duration =
      Ask<int32_t>([](int32_t& count) { return CallGetWakeRaw(kDurationWord, count); });
  if (report.machine.windowsTimer != WindowsTimer::Unused) {
    const auto time =
        Ask<WakeTime>([](WakeTime& asked) { return CallGetWakeTime(kDurationWord, asked); });
    // No duration reaches the bits of the year.
    report.durationIsTime = time && time->year != 0;
  }
  report.strength = Ask<int32_t>(CallGetStrength).value_or(report.strength);
}

void ReadSettings(StatusReport& report) {
  report.predictionsEnabled = ReadPredictionsEnabled();
  report.currentAttempt = ReadAttempts(kCurrentAttemptName);
  report.totalAttempts = ReadAttempts(kTotalAttemptsName);
  report.strength = Atoi(ReadPredictorValue(kPredictorSection, kStrengthName));
  int64_t lastRun = kNoOptimizerRun;
  if (ReadLastOptimizerRun(lastRun) && lastRun != kNoOptimizerRun) {
    report.lastOptimizerRun = lastRun;
  }
}

void ReadEvents(StatusReport& report) {
  std::vector<std::string> events;
  report.eventsError = ReadLastEvents(kEvents, events);
  for (const std::string& xml : events) report.events.push_back(ParseEventXml(xml));
}

}  // namespace

StatusReport MakeStatusReport() {
  StatusReport report = {};
  report.ping = CallPing();
  report.service = QueryService();
  ReadSettings(report);
  report.machine = ReadMachineKind();
  if (report.ping.IsDone()) AskService(report);
  report.strengthHasResult = StrengthHasResult(report.strength);
  report.controller = ExpectController(
      {report.ping.IsDone(), report.featureEnabled == true, report.currentAttempt,
       report.totalAttempts, SettingOr(kServiceFeedbackName, kDefaultServiceFeedback) != 0,
       EngineProblem()});
  ReadEvents(report);
  return report;
}

}  // namespace dozewell::ctl
