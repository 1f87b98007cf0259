#ifndef DOZEWELL_CTL_CHECK_NIGHTS_H_
#define DOZEWELL_CTL_CHECK_NIGHTS_H_

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "ctl/event_text.h"
#include "event_log/log_event.h"

namespace dozewell::ctl {

// All times are seconds since 1970, UTC.

enum class PowerChange { Sleep, ShutDown, Resume };

// A sleep, a shut-down or a resume that the system has logged.
struct LoggedChange {
  PowerChange change;
  int64_t time;
  WakeCause cause;  // of a resume
  bool isHeard;     // the service has logged it too
};

// Wakes after which the machine was to go back to sleep, and those after which it stayed awake.
struct ReturnsToSleep {
  size_t wakes = 0;
  std::vector<int64_t> stayedAwake;
};

// The last nights by the system's log and by the service's.
struct Nights {
  // What happened while the service listened, oldest first.
  std::vector<LoggedChange> changes;
  // The wakes after which the service put the machine back to sleep, or found it on its way to
  // hibernation.
  ReturnsToSleep afterServiceWakes;
  // The wakes by a timer of the system that the service took for resumes, at which it put the
  // user's timeouts back into the power scheme.
  ReturnsToSleep afterTimerResumes;
};

// Compares the System log's events, in any order, with the service's, oldest first. The service
// listens from its first event on, except between a stop and the next start. Wakes within the last
// quarter of an hour are left out of the returns to sleep, since they are not decided yet.
Nights CompareNights(std::vector<LogEvent> systemEvents,
                     std::span<const ServiceEvent> serviceEvents, int64_t now);

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_CHECK_NIGHTS_H_
