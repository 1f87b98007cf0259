#include "ctl/check/nights.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <utility>

#include "event_log/clock_correction.h"

namespace dozewell::ctl {
namespace {

// Both logs have an event of the same moment this close to each other.
constexpr int64_t kSlackSeconds = 3 * 60;

// A machine that nobody uses goes back to sleep within this time; the system waits two minutes.
constexpr int64_t kReturnSeconds = 15 * 60;

constexpr bool GoesDown(PowerChange change) { return change != PowerChange::Resume; }

bool IsAfterTimer(const LoggedChange& change) {
  return change.change == PowerChange::Resume && change.cause == WakeCause::Timer;
}

std::optional<PowerChange> ChangeOf(const LogEvent& event) {
  switch (event.kind) {
    case LogEventKind::Slept:
      return PowerChange::Sleep;
    case LogEventKind::Stopped:
      return PowerChange::ShutDown;
    case LogEventKind::Woke:
      return PowerChange::Resume;
    default:
      return std::nullopt;
  }
}

int64_t TimeOf(const LogEvent& event) {
  return std::min(event.wakeTime.value_or(event.time), event.time);
}

// Puts what a second event of a change says into it. Of a wake the second one knows the cause and
// the better time: the first may have been logged by a clock that had stood still.
void AddTo(LoggedChange& change, const LogEvent& event) {
  if (event.cause != WakeCause::Unknown) change.cause = event.cause;
  if (event.wakeTime) change.time = std::max(change.time, TimeOf(event));
}

// Puts the changes of the log's events together. A sleep, a shut-down and a wake are each logged in
// several events, and what is said last of a wake may come only after the next sleep has begun. A
// start lies between two shut-downs.
class ChangeFinder {
 public:
  void Take(const LogEvent& event) {
    const auto change = ChangeOf(event);
    if (!change) {
      hasStarted_ |= event.kind == LogEventKind::Started;
    } else if (IsLate(event, *change)) {
      AddTo(*(changes_.rbegin() + 1), event);
    } else if (!hasStarted_ && !changes_.empty() &&
               GoesDown(changes_.back().change) == GoesDown(*change)) {
      AddTo(changes_.back(), event);
    } else {
      changes_.push_back({*change, TimeOf(event), event.cause, false});
      hasStarted_ = false;
    }
  }

  std::vector<LoggedChange> Finish() { return std::move(changes_); }

 private:
  bool IsLate(const LogEvent& event, PowerChange change) const {
    return change == PowerChange::Resume && changes_.size() >= 2 &&
           GoesDown(changes_.back().change) && TimeOf(event) < changes_.back().time;
  }

  std::vector<LoggedChange> changes_;
  bool hasStarted_ = false;  // since the last change
};

// What the service's events say of the same.
struct Heard {
  PowerChange change;
  int64_t time;
  bool isUsed;
};

bool IsNamed(const ServiceEvent& event, std::string_view name) {
  return event.text.ends_with(" - " + std::string(name));
}

std::vector<Heard> HeardIn(std::span<const ServiceEvent> events) {
  std::vector<Heard> heard;
  for (const ServiceEvent& event : events) {
    if (!event.utcSeconds) continue;
    const auto add = [&](std::string_view name, PowerChange change) {
      if (IsNamed(event, name)) heard.push_back({change, *event.utcSeconds, false});
    };
    add("Suspend", PowerChange::Sleep);
    add("ShuttingDown", PowerChange::ShutDown);
    add("Activating", PowerChange::Resume);
  }
  return heard;
}

// The service hears a shut-down as a sleep where Fast Startup is on.
void MarkHeard(std::vector<LoggedChange>& changes, std::vector<Heard> heard) {
  for (LoggedChange& change : changes) {
    const auto found = std::ranges::find_if(heard, [&change](const Heard& one) {
      return !one.isUsed && GoesDown(one.change) == GoesDown(change.change) &&
             std::abs(one.time - change.time) <= kSlackSeconds;
    });
    if (found == heard.end()) continue;
    found->isUsed = true;
    change.isHeard = true;
  }
}

bool ListensAt(int64_t time, std::span<const ServiceEvent> events) {
  bool listens = false;
  for (const ServiceEvent& event : events) {
    if (!event.utcSeconds) continue;
    if (*event.utcSeconds > time + kSlackSeconds) break;
    if (IsNamed(event, "Uninitializing")) {
      listens = *event.utcSeconds > time - kSlackSeconds;
    } else {
      listens = true;
    }
  }
  return listens;
}

// Notes a wake, and whether the machine slept soon after.
void AddWake(int64_t wake, std::span<const LoggedChange> changes, int64_t now,
             ReturnsToSleep& returns) {
  const bool slept = std::ranges::any_of(changes, [wake](const LoggedChange& change) {
    return GoesDown(change.change) && change.time >= wake && change.time <= wake + kReturnSeconds;
  });
  if (!slept && wake + kReturnSeconds > now) return;
  ++returns.wakes;
  if (!slept) returns.stayedAwake.push_back(wake);
}

}  // namespace

Nights CompareNights(std::vector<LogEvent> systemEvents,
                     std::span<const ServiceEvent> serviceEvents, int64_t now) {
  PutInOrder(systemEvents);
  Nights nights;
  ChangeFinder finder;
  for (const LogEvent& event : systemEvents) finder.Take(event);
  nights.changes = finder.Finish();
  const std::vector<LoggedChange> all = nights.changes;
  std::erase_if(nights.changes, [serviceEvents](const LoggedChange& change) {
    return !ListensAt(change.time, serviceEvents);
  });
  MarkHeard(nights.changes, HeardIn(serviceEvents));
  std::vector<int64_t> serviceWakes;
  for (const ServiceEvent& event : serviceEvents) {
    if (event.utcSeconds && (event.text == "Spike_S4ToS3" || event.text == "Spike_S3ToS4")) {
      serviceWakes.push_back(*event.utcSeconds);
      AddWake(*event.utcSeconds, all, now, nights.afterServiceWakes);
    }
  }
  for (const LoggedChange& change : nights.changes) {
    const bool isServices = std::ranges::any_of(serviceWakes, [&change](int64_t wake) {
      return std::abs(wake - change.time) <= kSlackSeconds;
    });
    if (IsAfterTimer(change) && change.isHeard && !isServices) {
      AddWake(change.time, all, now, nights.afterTimerResumes);
    }
  }
  return nights;
}

}  // namespace dozewell::ctl
