#include "event_log/clock_correction.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <tuple>

#include "base/wall_clock.h"

namespace dozewell {
namespace {

// Events that tell of the same start may be this far apart.
constexpr int64_t kStartSeconds = 300;

// Times may go back by this much from record to record: while the system starts, events wait until
// the log takes them.
constexpr int64_t kSlackSeconds = 3600;

void SortByRecord(std::vector<LogEvent>& events) {
  std::ranges::stable_sort(
      events, {}, [](const LogEvent& event) { return std::tuple(event.record, event.time); });
  const auto isRepeated = [](const LogEvent& a, const LogEvent& b) {
    return a.record != 0 && a.record == b.record;
  };
  events.erase(std::unique(events.begin(), events.end(), isRepeated), events.end());
}

// Goes through a log from its end, and moves events by as much as the clock was set afterwards.
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

  // The times decide, not the numbers: some events were stamped before the clock was set and have a
  // higher number than its setting, and the other way round.
  bool IsOfOldClock(int64_t time) const { return time <= oldTime_; }

  int64_t shift_ = 0;
  int64_t oldTime_ = kNone;  // what the clock showed when it was set
  int64_t start_ = kNone;    // when the system started by the old clock, once that is known
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
  // A day is left at either end, so that every zone's local time has a date.
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
