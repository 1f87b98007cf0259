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
  int64_t slotStart;              // of the slot that it starts in
  int64_t next;                   // of the event after its start, the earliest that can end it
  std::optional<int64_t> resume;  // nothing when the history ends asleep
};

// What candidates of one day grouping know, at the start of each sleep, of the slots after it: runs
// of slots in a row about which the same is known. A sleep's slots count from its start's, which is
// number 0 and in no run; they go as far as a prediction for that sleep can matter, or to before
// one without observations.
struct ObservedSlots {
  // By sleep, and one more: where its runs begin among those of all sleeps.
  std::vector<size_t> firstRun;

  // By run: the slot behind its last one, and its observations ready to be weighed.
  std::vector<int32_t> end;
  std::vector<float> last;
  std::vector<float> secondLast;
  std::vector<float> older;  // the mean

  // The runs for which those do not hold, since they have no second-last or no older observations.
  struct Incomplete {
    size_t run;
    Observations observations;
  };
  std::vector<Incomplete> incomplete;
};

// What candidates can know of a history. It is the same for all of one day grouping, since a
// simulated hibernation or wake-back only goes on with a sleep that they have learnt of.
struct ObservedHistory {
  std::vector<ObservedSleep> sleeps;  // those that something follows
  std::vector<ObservedSlots> slots;   // by day grouping
};

// Nothing for a history in which candidates may differ in what they learn, or whose simulation
// throws: one with codes that the service does not write, with events that the tracker refuses or
// with times too near the ends of the calendar. Unfinished after a stop request.
std::optional<ObservedHistory> ObserveHistory(std::span<const HistoryRecord> history,
                                              std::span<const int32_t> dayGroupings);

}  // namespace dozewell

#endif  // DOZEWELL_OPTIMIZER_GRID_OBSERVED_HISTORY_H_
