#ifndef DOZEWELL_CTL_STATUS_REPORT_H_
#define DOZEWELL_CTL_STATUS_REPORT_H_

#include <array>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "common/json.h"
#include "ctl/controller_outlook.h"
#include "ctl/event_text.h"
#include "ctl/machine_kind.h"
#include "ctl/power_reading.h"
#include "ctl/service_calls.h"
#include "ctl/service_query.h"

namespace dozewell::ctl {

// All that can be found out about the service. What only the service knows is empty when it does
// not answer, and so is the feature, on which a setting may decide differently by its next start.
// What it refuses to tell, and the other settings, are read from this machine.
struct StatusReport {
  CallResult ping;
  ServiceQuery service;
  std::optional<bool> featureEnabled;
  std::optional<uint32_t> currentAttempt;
  std::optional<uint32_t> totalAttempts;
  ControllerOutlook controller;
  bool predictionsEnabled;
  MachineKind machine;
  std::optional<uint32_t> scheme;  // see kSchemes
  std::array<PowerReading, std::size(kSources)> power;
  std::optional<bool> driverEnabled;
  std::optional<WakeTime> alarm;    // of timer 0
  std::optional<int32_t> duration;  // of timer 1, in minutes
  // Timer 1 holds a time of the calendar. Looked at where Windows' timer, which does not wake for
  // one, is in the driver's place.
  bool durationIsTime = false;
  int32_t strength;
  bool strengthHasResult;                   // the optimizer has stored parameters for it
  std::optional<int64_t> lastOptimizerRun;  // UTC seconds; nothing for never
  uint32_t eventsError;                     // the system's, when the events could not be read
  std::vector<ServiceEvent> events;         // the last ones, oldest first
};

StatusReport MakeStatusReport();

// One screen.
std::string StatusText(const StatusReport& report);
Json StatusJson(const StatusReport& report);

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_STATUS_REPORT_H_
