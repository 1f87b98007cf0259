#ifndef DOZEWELL_OPTIMIZER_GRID_SLOT_SEARCH_H_
#define DOZEWELL_OPTIMIZER_GRID_SLOT_SEARCH_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>

#include "optimizer/grid/outcome_table.h"
#include "optimizer/grid/simulated_cycle.h"
#include "prediction/arbitrary_cycle_probability_tracker.h"
#include "prediction/tracker.h"

namespace dozewell {

// The tracker's two searches through the slots after a sleep's start, for all thresholds at once.
// Everything is inline, since most searches are as short as a function call.

// How many thresholds are no higher than the probability. Compares all of them: there are few, and
// the branches of a binary search cannot be predicted.
inline uint32_t CountNotAbove(float probability, std::span<const float> thresholds) {
  uint32_t count = 0;
  for (const float threshold : thresholds) count += threshold <= probability ? 1 : 0;
  return count;
}

// A position among the slots after a sleep's start, which is in slot 0. The slots come in runs with
// one probability each.
class SlotCursor {
 public:
  // Starts at slot 0. Takes for each run the slot behind its last one, and its probability; both
  // must outlive the cursor.
  SlotCursor(std::span<const int32_t> ends, std::span<const float> probabilities)
      : ends_(ends.data()),
        probabilities_(probabilities.data()),
        endOfSlots_(ends.empty() ? 0 : ends.back()) {}

  int32_t Slot() const { return slot_; }
  float Probability() const { return probabilities_[run_]; }

  // Lets Advance end where a search that starts here ends: before it comes round the cycle.
  void BeginSearch() { endOfSearch_ = std::min(endOfSlots_, slot_ + kSimulatedSlots); }

  // Moves to the next slot. False at the end of the search, and when the slot is unknown.
  bool Advance() {
    if (slot_ + 1 >= endOfSearch_) return false;
    if (++slot_ == ends_[run_]) ++run_;
    return Probability() != kUnknownProbability;
  }
  // Moves to the last slot of this run.
  void SkipRun() { slot_ = ends_[run_] - 1; }
  // Moves back, at most to slot 1.
  void GoBack(int32_t slots) {
    slot_ -= slots;
    while (run_ > 0 && slot_ < ends_[run_ - 1]) --run_;
  }

 private:
  const int32_t* ends_;
  const float* probabilities_;
  int32_t endOfSlots_;
  int32_t endOfSearch_ = 0;
  int32_t slot_ = 0;
  size_t run_ = 0;
};

// Finds the first idle stretch of each low threshold: stretches in the order of time, each with the
// thresholds whose first one it is. A stretch that is idle for a threshold is idle for all higher
// ones, so it always looks for the highest threshold without a stretch so far.
class IdleSearch {
 public:
  // For the thresholds in the range `lows`. They are in ascending order and outlive the search.
  IdleSearch(const SlotCursor& from, std::span<const float> thresholds, const IndexRange& lows)
      : cursor_(from), thresholds_(thresholds), firstLow_(lows.begin), lows_{lows.end, lows.end} {
    cursor_.BeginSearch();
  }

  bool Next() {
    if (lows_.begin == firstLow_) return false;
    const float threshold = thresholds_[lows_.begin - 1];
    while (cursor_.Advance()) {
      const float probability = cursor_.Probability();
      if (!(threshold > probability)) {  // true for not-a-number
        last_ = kNotIdle;
        cursor_.SkipRun();
        continue;
      }
      const float highest = std::max({probability, last_, beforeLast_});
      beforeLast_ = last_;
      last_ = probability;
      if (threshold > highest) {
        lows_ = {std::max(CountNotAbove(highest, thresholds_), firstLow_), lows_.begin};
        return true;
      }
    }
    return false;
  }

  // The first slot of the stretch that Next has found, and its thresholds.
  SlotCursor FirstSlot() const {
    SlotCursor first = cursor_;
    first.GoBack(kIdleSlots - 1);
    return first;
  }
  const IndexRange& Lows() const { return lows_; }

 private:
  static constexpr int32_t kIdleSlots =
      kIdleStretchMinutes / static_cast<int32_t>(kSimulatedTimeResolution);
  static_assert(kIdleSlots == 3, "a stretch is the slot at the cursor and the two before it");
  static constexpr float kNotIdle = std::numeric_limits<float>::infinity();

  SlotCursor cursor_;
  std::span<const float> thresholds_;
  uint32_t firstLow_;
  IndexRange lows_;
  // The probabilities of the slot at the cursor and of the one before it.
  float last_ = kNotIdle;
  float beforeLast_ = kNotIdle;
};

// Finds the first slot in use of each high threshold: slots in the order of time, each with the
// thresholds whose first one it is. It always looks for the lowest threshold without a slot so far.
class UseSearch {
 public:
  // The thresholds are in ascending order and outlive the search.
  UseSearch(const SlotCursor& from, std::span<const float> thresholds)
      : cursor_(from), thresholds_(thresholds) {
    cursor_.BeginSearch();
  }

  bool Next() {
    if (highs_.end == thresholds_.size()) return false;
    const float threshold = thresholds_[highs_.end];
    while (cursor_.Advance()) {
      const float probability = cursor_.Probability();
      if (probability >= threshold) {
        highs_ = {highs_.end, CountNotAbove(probability, thresholds_)};
        return true;
      }
      cursor_.SkipRun();
    }
    return false;
  }

  // The slot that Next has found, and its thresholds.
  const SlotCursor& Slot() const { return cursor_; }
  const IndexRange& Highs() const { return highs_; }

 private:
  SlotCursor cursor_;
  std::span<const float> thresholds_;
  IndexRange highs_ = {0, 0};
};

}  // namespace dozewell

#endif  // DOZEWELL_OPTIMIZER_GRID_SLOT_SEARCH_H_
