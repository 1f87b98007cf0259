#ifndef DOZEWELL_OPTIMIZER_GRID_OBSERVED_HISTORY_H_
#define DOZEWELL_OPTIMIZER_GRID_OBSERVED_HISTORY_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "prediction/history_file.h"
#include "prediction/slot_probability.h"

namespace dozewell {

// A stretch of sleep in a history. Times are wall-clock seconds.
struct ObservedSleep {
  int64_t start;
  int64_t slotStart;              // when the slot began in which the sleep starts
  int64_t next;                   // predictions count up to here only
  std::optional<int64_t> resume;  // none when the history ends asleep

  // The records of a sleep with recorded hibernations, from its start to its resume or to the end
  // of the history; of any other sleep none.
  std::span<const HistoryRecord> recorded;
};

// What sets of one day grouping know, at the start of each sleep, of the slots after it: runs of
// slots in a row with equal observations. Slot 0 of a sleep is the one that it starts in and
// belongs to no run. The runs end where predictions for the sleep cannot matter any more, or before
// the first slot without observations.
struct ObservedSlots {
  // The first run of each sleep, and at the end the number of all runs.
  std::vector<size_t> firstRun;

  // Of each run the slot behind its last one, and its observations as numbers to be weighed.
  std::vector<int32_t> end;
  std::vector<float> last;
  std::vector<float> secondLast;
  std::vector<float> older;  // their mean

  // The runs without second-last or older observations, for which those numbers do not hold.
  struct Incomplete {
    size_t run;
    Observations observations;
  };
  std::vector<Incomplete> incomplete;
};

// What the sets of a grid learn from a history.
struct ObservedHistory {
  std::vector<ObservedSleep> sleeps;  // without a sleep that ends the history
  std::vector<ObservedSlots> slots;   // by day grouping
};

// No result for a history from which sets may learn different things, or whose simulation throws:
// one with codes other than those of activity, sleep and hibernation, with events that the tracker
// refuses, with a recorded hibernation in a sleep whose times go back, or with times too near the
// ends of the calendar. Incomplete after a stop request. The history must outlive the result.
std::optional<ObservedHistory> ObserveHistory(std::span<const HistoryRecord> history,
                                              std::span<const int32_t> dayGroupings);

}  // namespace dozewell

#endif  // DOZEWELL_OPTIMIZER_GRID_OBSERVED_HISTORY_H_
