#include "event_log/usage.h"

#include <algorithm>

namespace dozewell {
namespace {

// How long the machine has to be awake for it to count as use.
constexpr int64_t kLeastSecondsAfterTimer = 15 * 60;
constexpr int64_t kLeastSecondsAfterUnknown = 2 * 60;

// So much earlier may the log have the sleep's begin than the wake that follows says.
constexpr int64_t kSleepSlackSeconds = 60;

// What brought a machine into use, as far as it matters to how long that must last.
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
    bool isUnexpected;     // nothing ended the use but the next start
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

  // One wake has up to two events, of which the second knows more.
  void OnWake(const LogEvent& event) {
    const int64_t leastSeconds = LeastSecondsAfter(event.cause);
    if (!event.sleepTime || !event.wakeTime) {
      if (!IsInUse()) BeginUse(event.time, leastSeconds);
      return;
    }
    const int64_t wakeTime = std::min(*event.wakeTime, event.time);
    if (!IsInUse()) {
      // One that was logged only after the machine had gone back to sleep tells of an earlier wake.
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
