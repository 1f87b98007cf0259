#include "common/duration_text.h"
#include "common/format_text.h"
#include "common/local_time.h"
#include "ctl/local_time_text.h"
#include "ctl/status_report.h"
#include "ctl/unreachable_text.h"
#include "ctl/wake_time_text.h"

namespace dozewell::ctl {
namespace {

constexpr const char* kNotKnown = "not known, as the service does not answer";

std::string Line(const char* label, const std::string& text) {
  return FormatText("%-19s ", label) + text + "\n";
}

const char* OnOff(bool on) { return on ? "on" : "off"; }

std::string ServiceText(const StatusReport& report) {
  const std::string state = ServiceStateText(report.service);
  const bool runsAsService = report.service.error == 0;
  return report.ping.IsDone() && !runsAsService
             ? state + ", but one answers; it may run in a console"
             : state;
}

std::string FeatureText(const StatusReport& report) {
  return report.featureEnabled ? OnOff(*report.featureEnabled) : kNotKnown;
}

const char* ExpectedText(Expected runs) {
  switch (runs) {
    case Expected::No:
      return "does not run: ";
    case Expected::Maybe:
      return "may run: ";
    case Expected::Yes:
      return "should run: ";
  }
  return "";
}

const char* ExpectedJson(Expected runs) {
  switch (runs) {
    case Expected::No:
      return "no";
    case Expected::Maybe:
      return "maybe";
    case Expected::Yes:
      return "yes";
  }
  return "";
}

std::string PowerText(const StatusReport& report) {
  if (!report.ping.IsDone()) return Line("Power scheme", kNotKnown);
  return Line("Power scheme", report.scheme
                                  ? NameOf(kSchemes, *report.scheme)
                                  : "not " + ListOf(kSchemes) + ", or could not be read") +
         PowerTable(kSources, report.power);
}

std::string TimersText(const StatusReport& report) {
  if (!report.ping.IsDone()) return Line("Wake timers", kNotKnown);
  if (!report.driverEnabled) return Line("Wake timers", "none: the driver does not answer");
  const bool isWindows = report.machine.windowsTimer != WindowsTimer::Unused;
  std::string text = Line("Wake timers", std::string(*report.driverEnabled ? "" : "not ") +
                                             "enabled" + (isWindows ? ", Windows' own" : ""));
  for (const std::string& limit : WindowsTimerLimits(report.machine)) {
    text += Line("  limit", limit);
  }
  if (report.alarm) {
    text += Line("  0, the alarm",
                 WakeTimeText(*report.alarm) + (isWindows ? ", which wakes nothing" : ""));
  }
  if (report.duration) {
    text += Line("  1, the duration", report.durationIsTime
                                          ? "a time of the calendar, which wakes nothing"
                                          : DurationText(*report.duration));
  }
  return text;
}

std::string StrengthText(const StatusReport& report) {
  return std::to_string(report.strength) +
         (report.strengthHasResult ? "" : ", for which the optimizer has stored nothing yet");
}

std::string LastRunText(const StatusReport& report) {
  if (!report.lastOptimizerRun) return "never";
  const auto time = LocalTimeText(report.lastOptimizerRun);
  return time ? WithBlank(*time) : "at an unreadable time";
}

std::string EventsText(const StatusReport& report) {
  if (report.eventsError != 0) {
    return Line("Last events",
                "could not be read (error " + std::to_string(report.eventsError) + ")");
  }
  if (report.events.empty()) return Line("Last events", "none");
  std::string text = "Last events\n";
  for (const ServiceEvent& event : report.events) text += "  " + EventLine(event);
  return text;
}

Json EventsJson(const StatusReport& report) {
  if (report.eventsError != 0) return nullptr;
  Json list = Json::array();
  for (const ServiceEvent& event : report.events) list.push_back(EventJson(event));
  return list;
}

}  // namespace

std::string StatusText(const StatusReport& report) {
  return Line("Service", ServiceText(report)) + Line("Feature", FeatureText(report)) +
         Line("Start attempts", AttemptsText(report.currentAttempt, report.totalAttempts)) +
         Line("Controller", ExpectedText(report.controller.runs) + report.controller.why) +
         Line("Predictions", report.predictionsEnabled ? "on" : "off, as DisablePrediction is 1") +
         Line("Machine", KindText(report.machine)) + PowerText(report) + TimersText(report) +
         Line("Strength", StrengthText(report)) + Line("Last optimizer run", LastRunText(report)) +
         EventsText(report);
}

Json StatusJson(const StatusReport& report) {
  const bool isKnown = report.service.error == 0;
  return {
      {"answers", report.ping.IsDone()},
      {"service", ServiceStateText(report.service)},
      {"featureEnabled", OptionalJson(report.featureEnabled)},
      {"currentAttempt", OptionalJson(report.currentAttempt)},
      {"totalAttempts", OptionalJson(report.totalAttempts)},
      {"controller",
       {{"runs", ExpectedJson(report.controller.runs)}, {"why", report.controller.why}}},
      {"predictionsEnabled", report.predictionsEnabled},
      {"scheme", report.scheme ? Json(NameOf(kSchemes, *report.scheme)) : Json()},
      {"power", PowerJson(kSources, report.power)},
      {"driverEnabled", OptionalJson(report.driverEnabled)},
      {"alarm", OptionalJson(report.alarm ? CalendarText(*report.alarm) : std::nullopt)},
      {"durationMinutes", OptionalJson(report.duration)},
      {"strength", report.strength},
      {"strengthHasResult", report.strengthHasResult},
      {"lastOptimizerRun", OptionalJson(LocalTimeText(report.lastOptimizerRun))},
      {"events", EventsJson(report)},
      {"serviceState", isKnown ? Json(report.service.state) : Json()},
      {"serviceError", report.service.error},
      {"alarmFields", report.alarm ? WakeTimeJson(*report.alarm) : Json()},
      {"lastOptimizerRunUtcSeconds", OptionalJson(report.lastOptimizerRun)},
      {"eventsError", report.eventsError},
      {"machine", KindJson(report.machine)},
  };
}

}  // namespace dozewell::ctl
