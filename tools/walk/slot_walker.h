#ifndef DOZEWELL_WALK_SLOT_WALKER_H_
#define DOZEWELL_WALK_SLOT_WALKER_H_

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "optimizer/simulator/parameter_grid.h"
#include "prediction/configurations.h"
#include "prediction/history_file.h"
#include "walk/search_calendar.h"
#include "walk/slot_service.h"
#include "walk/walk_counter.h"
#include "walk/walked_sleep.h"

namespace dozewell {

// Walks with the described predictor: with its parameters as they are, and at each strength as the
// service lives: a search when one is due, and what it found in force from then on.
class SlotWalker {
 public:
  // History and counter must outlive the object. Throws what a simulation throws, and so do the
  // others.
  SlotWalker(WalkCounter& counter, std::span<const HistoryRecord> history,
             IConfigurations& configuration, int64_t userTimeoutSeconds,
             const SearchHabits& habits);

  void Walk(const WalkedSleep& sleep);
  // The searches that were due so far.
  const std::vector<SearchRun>& Searches() const { return searches_; }

 private:
  void Search(std::span<const HistoryRecord> known);

  WalkCounter& counter_;
  int64_t userTimeoutSeconds_;
  SlotService service_;
  SearchCalendar calendar_;
  ParameterGrid grid_;
  std::vector<SearchRun> searches_;
  size_t settings_;
  size_t firstService_;
  size_t firstWithoutWake_;
};

}  // namespace dozewell

#endif  // DOZEWELL_WALK_SLOT_WALKER_H_
