#ifndef DOZEWELL_OPTIMIZER_GRID_SLOT_SEARCH_H_
#define DOZEWELL_OPTIMIZER_GRID_SLOT_SEARCH_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>

#include "optimizer/grid/outcome_table.h"
#include "optimizer/grid/slot_pool.h"
#include "optimizer/simulator/native_simulator_configurations.h"
#include "prediction/arbitrary_cycle_probability_tracker.h"
#include "prediction/tracker.h"

namespace dozewell {

// The tracker's two searches over the slots after a sleep's start, for all thresholds at once. All
// of it is inline: a search over a few slots takes no longer than a call.

// How many thresholds are no higher than the probability. Counts all of them: there are few, and no
// processor foresees the turns of a binary search.
inline uint32_t CountNotAbove(float probability, std::span<const float> thresholds) {
  uint32_t count = 0;
  for (const float threshold : thresholds) count += threshold <= probability ? 1 : 0;
  return count;
}

// A way through the slots behind a sleep's start, which is slot 0. They come in runs of slots in a
// row with one probability.
class SlotWalk {
 public:
  // For each run the slot behind its last one, and its probability. Both must outlive the walk.
  SlotWalk(std::span<const int32_t> ends, std::span<const float> probabilities)
      : ends_(ends.data()),
        probabilities_(probabilities.data()),
        endOfSlots_(ends.empty() ? 0 : ends.back()) {}

  int32_t Slot() const { return slot_; }
  float Probability() const { return probabilities_[run_]; }

  // Limits the way to what a search from here looks at: the rest of the cycle.
  void BeginSearch() { endOfSearch_ = std::min(endOfSlots_, slot_ + kSimulatedSlots); }

  // To the next slot; false at the end of the way and at a slot that is unknown.
  bool Advance() {
    if (slot_ + 1 >= endOfSearch_) return false;
    if (++slot_ == ends_[run_]) ++run_;
    return Probability() != kUnknownProbability;
  }
  // To the last slot of this run.
  void SkipRun() { slot_ = ends_[run_] - 1; }
  // Back by fewer slots than lie behind the start.
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

// Finds idle stretches in the order of time, each with those low thresholds that find it first. It
// looks for what the highest of those that have found none yet calls idle.
class IdleSearch {
 public:
  // For a range of the thresholds, which are in ascending order and outlive the search.
  IdleSearch(const SlotWalk& from, std::span<const float> thresholds, const IndexRange& lows)
      : walk_(from), thresholds_(thresholds), firstLow_(lows.begin), lows_{lows.end, lows.end} {
    walk_.BeginSearch();
  }

  bool Next() {
    if (lows_.begin == firstLow_) return false;
    const float threshold = thresholds_[lows_.begin - 1];
    while (walk_.Advance()) {
      const float probability = walk_.Probability();
      if (!(threshold > probability)) {  // which not-a-number is not either
        last_ = kNotIdle;
        walk_.SkipRun();
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

  // What Next has found: the first slot of the stretch, and the thresholds.
  SlotWalk FirstSlot() const {
    SlotWalk first = walk_;
    first.GoBack(kIdleSlots - 1);
    return first;
  }
  const IndexRange& Lows() const { return lows_; }

 private:
  static constexpr int32_t kIdleSlots =
      kIdleStretchMinutes / static_cast<int32_t>(kSimulatedTimeResolution);
  static_assert(kIdleSlots == 3, "a stretch is the slot of the walk and the two before it");
  static constexpr float kNotIdle = std::numeric_limits<float>::infinity();

  SlotWalk walk_;
  std::span<const float> thresholds_;
  uint32_t firstLow_;
  IndexRange lows_;
  // The probabilities of the two slots before the walk's next one.
  float last_ = kNotIdle;
  float beforeLast_ = kNotIdle;
};

// Finds slots in use in the order of time, each with those high thresholds that find it first. It
// looks for what the lowest of those that have found none yet calls in use.
class UseSearch {
 public:
  // For all of the thresholds, which are in ascending order and outlive the search.
  UseSearch(const SlotWalk& from, std::span<const float> thresholds)
      : walk_(from), thresholds_(thresholds) {
    walk_.BeginSearch();
  }

  bool Next() {
    if (highs_.end == thresholds_.size()) return false;
    const float threshold = thresholds_[highs_.end];
    while (walk_.Advance()) {
      const float probability = walk_.Probability();
      if (probability >= threshold) {
        highs_ = {highs_.end, CountNotAbove(probability, thresholds_)};
        return true;
      }
      walk_.SkipRun();
    }
    return false;
  }

  // What Next has found.
  const SlotWalk& Slot() const { return walk_; }
  const IndexRange& Highs() const { return highs_; }

 private:
  SlotWalk walk_;
  std::span<const float> thresholds_;
  IndexRange highs_ = {0, 0};
};

}  // namespace dozewell

#endif  // DOZEWELL_OPTIMIZER_GRID_SLOT_SEARCH_H_
