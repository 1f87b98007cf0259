#include "walk/search_calendar.h"

#include <algorithm>

#include "base/numbers.h"
#include "base/wall_clock.h"

namespace dozewell {

std::optional<SearchRun> SearchCalendar::SearchAfter(const WalkedSleep& sleep) {
  if (!IsDue(sleep.resume)) return std::nullopt;
  lastRun_ = sleep.resume;
  const int64_t delay = std::max(0, Wrap32(habits_.delayMinutes * kSecondsPerMinute));
  const int64_t begin = WrapAdd64(sleep.resume, delay);
  Save(begin, sleep.resumeRecord + 1);
  return SearchRun{sleep.resume, sleep.nextSuspend && *sleep.nextSuspend <= begin};
}

// The first launch only starts the clock.
bool SearchCalendar::IsDue(int64_t resume) {
  if (lastRun_ == kNoOptimizerRun) {
    lastRun_ = resume;
    return false;
  }
  const uint32_t interval = habits_.intervalDays * uint32_t{kSecondsPerDay};
  return WrapSubtract64(resume, lastRun_) > int64_t{interval};
}

// Records that were saved before are dropped once they are too old; new ones are saved in any case.
void SearchCalendar::Save(int64_t now, size_t records) {
  const double cutoff = HistoryCutoff(now, habits_.historyLimitDays);
  while (firstKept_ < saved_ && history_[firstKept_].time < cutoff) ++firstKept_;
  saved_ = records;
}

}  // namespace dozewell
