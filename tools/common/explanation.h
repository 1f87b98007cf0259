#ifndef DOZEWELL_COMMON_EXPLANATION_H_
#define DOZEWELL_COMMON_EXPLANATION_H_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "prediction/arbitrary_cycle_probability_tracker.h"
#include "prediction/slot_probability.h"
#include "prediction/suspend_decision.h"

namespace dozewell {

// What is known of a slot in one turn of the cycle.
struct SlotEvidence {
  int slot;
  tm start;  // when the slot begins in that turn
  float probability;
  Observations observations;
};

// How a search through the slots ended.
enum class SearchEnd {
  Found,
  UnknownSlot,   // at a slot about which nothing is known
  Nowhere,       // once round the cycle
  SlotsTooLong,  // an idle stretch is shorter than a slot
  TooFewSlots,   // a cycle of one slot has no other slot to look at
};

// One search with its evidence.
struct SearchExplanation {
  SearchEnd end;
  tm from;          // when the search began
  tm foundAt;       // Found: when what was found begins
  int32_t minutes;  // Found: from `from` to `foundAt`, rounded up
  // Found: the slots that made it, all of the stretch or the one slot in use. UnknownSlot: that
  // slot. Nowhere: the slot that came nearest to the threshold.
  std::vector<SlotEvidence> slots;
  // Idle stretches that ended Nowhere: the most idle slots in a row.
  int longestRun = 0;
};

// Why the predictions at a time are what they are.
struct Explanation {
  tm at;
  SuspendDecision decision;  // what a suspend at that time leads to
  int32_t minutesPerSlot;
  int32_t slotCount;
  int32_t unknownSlots;
  float strengthLow;
  float strengthHigh;
  // The groups of days that count together, by number in the cycle; none when each slot counts
  // alone.
  std::vector<std::vector<int>> dayGroups;
  SearchExplanation idle;                     // the next idle stretch
  std::optional<SearchExplanation> use;       // the next use after it, when it was found
  std::optional<SearchExplanation> nextIdle;  // the idle stretch after that use
};

// Explains the tracker's GetPredictions at a time.
Explanation Explain(ArbitraryCycleProbabilityTracker& tracker, const tm& at);

// The explanation in lines of at most 100 characters for a person to read.
std::string ExplanationText(const Explanation& explanation);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_EXPLANATION_H_
