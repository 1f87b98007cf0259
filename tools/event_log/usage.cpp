#include "event_log/usage.h"

#include <algorithm>

namespace dozewell {
namespace {

// How long the machine has to be awake for it to count as use.
constexpr int64_t kLeastSecondsAfterTimer = 15 * 60;
constexpr int64_t kLeastSecondsAfterUnknown = 2 * 60;

// The log may have the beginning of a sleep this much earlier than the wake after it says.
constexpr int64_t kSleepSlackSeconds = 60;

// How long use must last to count, by what woke the machine.
int64_t LeastSecondsAfter(WakeCause cause) {
  switch (cause) {
    case WakeCause::Timer:
      return kLeastSecondsAfterTimer;
    case WakeCause::Unknown:
      return kLeastSecondsAfterUnknown;
    case WakeCause::Device:
      break;
  }
  return 0;
}

class UsageFinder {
 public:
  void Take(const LogEvent& event) {
    switch (event.kind) {
      case LogEventKind::Slept:
      case LogEventKind::Stopped:
        EndUse(event.time);
        break;
      case LogEventKind::Started:
        OnStart(event.time);
        break;
      case LogEventKind::LogStarted:
        if (!IsInUse()) BeginUse(event.time, 0);
        break;
      case LogEventKind::Woke:
        OnWake(event);
        break;
      case LogEventKind::UncleanStart:
        OnUncleanStart(event);
        break;
      case LogEventKind::Other:
      case LogEventKind::ClockSet:
        break;
    }
    lastSeen_ = event.time;
  }

  Usage Finish() {
    Usage usage = LeaveOutWakes();
    usage.unexpectedEnds = unexpectedEnds_;
    if (IsInUse()) usage.marks.push_back({lastSeen_, true});
    return usage;
  }

 private:
  struct Mark {
    int64_t time;
    bool asleep;
    int64_t leastSeconds;  // of use for it to count
    bool isUnexpected;     // no event ended the use before the next start
  };

  bool IsInUse() const { return !marks_.empty() && !marks_.back().asleep; }

  void BeginUse(int64_t time, int64_t leastSeconds) {
    marks_.push_back({time, false, leastSeconds, false});
  }

  void EndUse(int64_t time) {
    if (marks_.empty() || IsInUse()) marks_.push_back({time, true, 0, false});
  }

  void OnStart(int64_t time) {
    if (IsInUse()) {
      marks_.push_back({lastSeen_, true, 0, true});
      ++unexpectedEnds_;
    }
    BeginUse(time, 0);
  }

  void OnUncleanStart(const LogEvent& event) {
    if (!event.aliveTime || marks_.size() < 2) return;
    Mark& end = marks_[marks_.size() - 2];
    const bool isBetween = *event.aliveTime > end.time && *event.aliveTime < marks_.back().time;
    if (end.isUnexpected && isBetween) end.time = *event.aliveTime;
  }

  // A wake is logged in up to two events, and the second one says more.
  void OnWake(const LogEvent& event) {
    const int64_t leastSeconds = LeastSecondsAfter(event.cause);
    if (!event.sleepTime || !event.wakeTime) {
      if (!IsInUse()) BeginUse(event.time, leastSeconds);
      return;
    }
    const int64_t wakeTime = std::min(*event.wakeTime, event.time);
    if (!IsInUse()) {
      // An event logged only after the machine went back to sleep is about an earlier wake.
      if (marks_.empty() || wakeTime >= marks_.back().time) BeginUse(wakeTime, leastSeconds);
      return;
    }
    Mark& wake = marks_.back();
    if (wake.time < *event.sleepTime - kSleepSlackSeconds) return;
    wake.time = std::max(wake.time, wakeTime);
    wake.leastSeconds = leastSeconds;
  }

  Usage LeaveOutWakes() const {
    Usage usage;
    int64_t leastSeconds = 0;
    for (const Mark& mark : marks_) {
      std::vector<UsageMark>& marks = usage.marks;
      if (mark.asleep && !marks.empty() && mark.time - marks.back().time < leastSeconds) {
        marks.pop_back();
        ++usage.wakesLeftOut;
        if (!marks.empty()) continue;
      }
      marks.push_back({mark.time, mark.asleep});
      leastSeconds = mark.leastSeconds;
    }
    return usage;
  }

  std::vector<Mark> marks_;
  int64_t lastSeen_ = 0;
  size_t unexpectedEnds_ = 0;
};

}  // namespace

Usage FindUsage(std::span<const LogEvent> events) {
  UsageFinder finder;
  for (const LogEvent& event : events) finder.Take(event);
  return finder.Finish();
}

}  // namespace dozewell
