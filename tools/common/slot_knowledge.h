#ifndef DOZEWELL_COMMON_SLOT_KNOWLEDGE_H_
#define DOZEWELL_COMMON_SLOT_KNOWLEDGE_H_

#include <cstdint>
#include <vector>

#include "prediction/arbitrary_cycle_probability_tracker.h"

namespace dozewell {

// What is known of one slot of the cycle, and how sure that is.
struct SlotKnowledge {
  float probability;  // kUnknownProbability when nothing is known
  int64_t seen;       // how many observations the probability rests on, each counted once

  bool operator==(const SlotKnowledge&) const = default;
};

// The knowledge of all slots. Where days count together, a slot rests on the observations of its
// time of day on all of them: the newest of two days and all older ones.
std::vector<SlotKnowledge> KnowledgeOfSlots(ArbitraryCycleProbabilityTracker& tracker);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_SLOT_KNOWLEDGE_H_
