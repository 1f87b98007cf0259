#ifndef DOZEWELL_PREDICTION_PROBABILITY_MAP_H_
#define DOZEWELL_PREDICTION_PROBABILITY_MAP_H_

#include <cstddef>
#include <cstdint>
#include <vector>

namespace dozewell {

// The probability of every slot of a cycle. Whether a slot is unknown, idle or in use is also kept
// as one bit a slot, so that a search over the cycle looks at 64 slots at a time.
class ProbabilityMap {
 public:
  // All slots start as unknown.
  explicit ProbabilityMap(int slotCount = 0);

  // A slot below `low` is idle, one at or above `high` is in use. Both start as 0.
  void SetThresholds(float low, float high);

  void Set(int slot, float probability);
  float Get(int slot) const { return probabilities_[static_cast<size_t>(slot)]; }

  // Both searches go through the slots behind `slot` once round the cycle, without `slot` itself,
  // and give up at the first unknown slot. They return how many slots after `slot` they ended, or 0
  // when they found nothing.

  // Ends at the last of the first `run` idle slots in a row. `run` is at most 64; 0 is never found.
  int FindIdleRun(int slot, int run) const;
  // Ends at the first slot that is in use.
  int FindInUse(int slot) const;

 private:
  // One bit for each of 64 slots, or all or no bits for one slot.
  struct Bits {
    uint64_t unknown;
    uint64_t idle;
    uint64_t inUse;

    bool operator==(const Bits&) const = default;
  };

  Bits Classify(float probability) const;
  void Write(int slot, const Bits& bits);
  // The bits of one kind for 64 slots from `slot` on, round the cycle.
  uint64_t Window(int slot, uint64_t Bits::*kind) const;
  int Advance(int slot, int steps) const;

  int slotCount_;
  float low_ = 0.0F;
  float high_ = 0.0F;
  std::vector<float> probabilities_;
  // The first 64 slots are repeated behind the last one.
  std::vector<Bits> bits_;
};

}  // namespace dozewell

#endif  // DOZEWELL_PREDICTION_PROBABILITY_MAP_H_
