#ifndef DOZEWELL_WALK_SEARCH_CALENDAR_H_
#define DOZEWELL_WALK_SEARCH_CALENDAR_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "prediction/history_file.h"
#include "settings/setting_names.h"
#include "walk/walked_sleep.h"

namespace dozewell {

// When the service searches, as its settings say.
struct SearchHabits {
  uint32_t intervalDays = kDefaultOptimizerIntervalDays;
  uint32_t delayMinutes = kDefaultOptimizerDelayMinutes;
  uint32_t historyLimitDays = kDefaultHistoryLimitDays;

  bool operator==(const SearchHabits&) const = default;
};

// A search that was due. Times are wall-clock seconds.
struct SearchRun {
  int64_t launched;
  bool isCutShort;  // by the next suspend, which came before the search began; nothing is found

  bool operator==(const SearchRun&) const = default;
};

// Goes through a history as the service lives it, and says when it searches on which records. The
// machine is taken to be on mains, and a search to take no time.
class SearchCalendar {
 public:
  // The records must outlive the object.
  SearchCalendar(std::span<const HistoryRecord> history, const SearchHabits& habits)
      : history_(history), habits_(habits) {}

  // To be called for each sleep in turn: the search that its resume launches, if one is due.
  std::optional<SearchRun> SearchAfter(const WalkedSleep& sleep);

  // The records that the last such search reads.
  std::span<const HistoryRecord> Known() const {
    return history_.subspan(firstKept_, saved_ - firstKept_);
  }

 private:
  bool IsDue(int64_t resume);
  void Save(int64_t now, size_t records);

  std::span<const HistoryRecord> history_;
  SearchHabits habits_;
  int64_t lastRun_ = kNoOptimizerRun;
  // The history file has the records between these positions.
  size_t firstKept_ = 0;
  size_t saved_ = 0;
};

}  // namespace dozewell

#endif  // DOZEWELL_WALK_SEARCH_CALENDAR_H_
