#ifndef DOZEWELL_EVENT_LOG_LOG_EVENT_H_
#define DOZEWELL_EVENT_LOG_LOG_EVENT_H_

#include <cstdint>
#include <optional>

namespace dozewell {

// What an event of the System log says of the machine being in use.
enum class LogEventKind {
  Other,         // only that the machine was running then
  Started,       // the system started
  LogStarted,    // the event log started, which it does soon after the system
  Stopped,       // the system was shut down
  Slept,         // the machine fell asleep, or into hibernation
  Woke,          // it woke
  UncleanStart,  // the system found, after a start, that it had not been shut down
  ClockSet,      // someone or something set the clock
};

// What woke a machine.
enum class WakeCause {
  Unknown,
  Device,  // the power button or a device, usually by a person's hand
  Timer,
};

// An event of the System log. All times are seconds since 1970, UTC, by the machine's clock. What
// an event does not say is empty.
struct LogEvent {
  uint64_t record = 0;  // the log's own number, which grows; 0 when there is none
  int64_t time = 0;     // when it was logged
  LogEventKind kind = LogEventKind::Other;

  // Of Woke:
  WakeCause cause = WakeCause::Unknown;
  std::optional<int64_t> sleepTime = {};
  std::optional<int64_t> wakeTime = {};
  // Of UncleanStart: when the machine was last known to run.
  std::optional<int64_t> aliveTime = {};
  // Of ClockSet: what the clock showed before and after.
  std::optional<int64_t> oldTime = {};
  std::optional<int64_t> newTime = {};

  bool operator==(const LogEvent&) const = default;
};

}  // namespace dozewell

#endif  // DOZEWELL_EVENT_LOG_LOG_EVENT_H_
