#include "event_log/clock_correction.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <tuple>

#include "base/wall_clock.h"

namespace dozewell {
namespace {

// So far apart may the events be that tell of one start.
constexpr int64_t kStartSeconds = 300;

// So much may the order of times differ from that of the records: a starting system's events wait
// until the log takes them.
constexpr int64_t kSlackSeconds = 3600;

void SortByRecord(std::vector<LogEvent>& events) {
  std::ranges::stable_sort(
      events, {}, [](const LogEvent& event) { return std::tuple(event.record, event.time); });
  const auto isRepeated = [](const LogEvent& a, const LogEvent& b) {
    return a.record != 0 && a.record == b.record;
  };
  events.erase(std::unique(events.begin(), events.end(), isRepeated), events.end());
}

// Goes through a log from its end, and moves events by what the clock was set afterwards.
class BackwardCorrection {
 public:
  // True when the event was moved.
  bool Correct(LogEvent& event) {
    const bool isBeforeStart = start_ != kNone && std::abs(event.time - start_) > kStartSeconds;
    const bool endsUse = event.kind == LogEventKind::Slept || event.kind == LogEventKind::Stopped;
    if (isBeforeStart || endsUse) Forget();

    const int64_t stamp = event.time;
    if (IsOfOldClock(stamp)) {
      if (event.kind == LogEventKind::Started) start_ = stamp;
      event.time += shift_;
    }
    if (event.wakeTime && IsOfOldClock(*event.wakeTime)) *event.wakeTime += shift_;
    if (event.kind == LogEventKind::ClockSet && event.oldTime && event.newTime) {
      shift_ += *event.newTime - *event.oldTime;
      oldTime_ = *event.oldTime;
    }
    return event.time != stamp;
  }

 private:
  static constexpr int64_t kNone = -1;  // before any time that an event has

  void Forget() {
    shift_ = 0;
    oldTime_ = kNone;
    start_ = kNone;
  }

  // Some events have a higher number than the setting of the clock and were stamped before it, and
  // the other way about.
  bool IsOfOldClock(int64_t time) const { return time <= oldTime_; }

  int64_t shift_ = 0;
  int64_t oldTime_ = kNone;  // what the clock showed when it was set
  int64_t start_ = kNone;    // of the system, by the old clock, once it has been met
};

size_t CorrectTimes(std::vector<LogEvent>& events) {
  size_t corrected = 0;
  BackwardCorrection correction;
  for (auto event = events.rbegin(); event != events.rend(); ++event) {
    if (correction.Correct(*event)) ++corrected;
  }
  return corrected;
}

size_t LeaveOutImpossibleTimes(std::vector<LogEvent>& events) {
  if (events.empty()) return 0;
  // Every zone's local time must have a date.
  int64_t earliest = kSecondsPerDay;
  const int64_t latest = std::min(events.back().time + kSlackSeconds, kLastSecond - kSecondsPerDay);
  return std::erase_if(events, [&](const LogEvent& event) {
    if (event.time < earliest || event.time > latest) return true;
    earliest = std::max(earliest, event.time - kSlackSeconds);
    return false;
  });
}

}  // namespace

ClockCorrections PutInOrder(std::vector<LogEvent>& events) {
  SortByRecord(events);
  ClockCorrections corrections;
  corrections.corrected = CorrectTimes(events);
  corrections.leftOut = LeaveOutImpossibleTimes(events);
  std::ranges::stable_sort(events, {}, &LogEvent::time);
  return corrections;
}

}  // namespace dozewell
