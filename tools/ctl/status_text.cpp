#include "common/duration_text.h"
#include "common/format_text.h"
#include "common/json.h"
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
  std::string text = Line("Wake timers", *report.driverEnabled ? "enabled" : "not enabled");
  if (report.alarm) text += Line("  0, the alarm", WakeTimeText(*report.alarm));
  if (report.duration) text += Line("  1, the duration", DurationText(*report.duration));
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

std::string NumberJson(int64_t value) { return std::to_string(value); }

}  // namespace

std::string StatusText(const StatusReport& report) {
  return Line("Service", ServiceText(report)) + Line("Feature", OnOff(report.featureEnabled)) +
         Line("Start attempts", AttemptsText(report.currentAttempt, report.totalAttempts)) +
         Line("Controller", ExpectedText(report.controller.runs) + report.controller.why) +
         Line("Predictions", report.predictionsEnabled ? "on" : "off, as DisablePrediction is 1") +
         PowerText(report) + TimersText(report) + Line("Strength", StrengthText(report)) +
         Line("Last optimizer run", LastRunText(report)) + EventsText(report);
}

std::string StatusJson(const StatusReport& report) {
  const auto schemeJson = [](uint32_t scheme) { return JsonString(NameOf(kSchemes, scheme)); };
  const auto alarm = report.alarm ? CalendarText(*report.alarm) : std::nullopt;
  return "{\"answers\":" + BoolJson(report.ping.IsDone()) +
         ",\"service\":" + JsonString(ServiceStateText(report.service)) +
         ",\"featureEnabled\":" + BoolJson(report.featureEnabled) +
         ",\"currentAttempt\":" + OptionalJson(report.currentAttempt, NumberJson) +
         ",\"totalAttempts\":" + OptionalJson(report.totalAttempts, NumberJson) +
         ",\"controller\":{\"runs\":" + JsonString(ExpectedJson(report.controller.runs)) +
         ",\"why\":" + JsonString(report.controller.why) + "}" +
         ",\"predictionsEnabled\":" + BoolJson(report.predictionsEnabled) +
         ",\"scheme\":" + OptionalJson(report.scheme, schemeJson) +
         ",\"power\":" + PowerJson(kSources, report.power) +
         ",\"driverEnabled\":" + OptionalJson(report.driverEnabled, BoolJson) +
         ",\"alarm\":" + OptionalJson(alarm, JsonString) +
         ",\"durationMinutes\":" + OptionalJson(report.duration, NumberJson) +
         ",\"strength\":" + NumberJson(report.strength) +
         ",\"strengthHasResult\":" + BoolJson(report.strengthHasResult) + ",\"lastOptimizerRun\":" +
         OptionalJson(LocalTimeText(report.lastOptimizerRun), JsonString) +
         ",\"events\":" + (report.eventsError != 0 ? "null" : JsonList(report.events, EventJson)) +
         "}\n";
}

}  // namespace dozewell::ctl
