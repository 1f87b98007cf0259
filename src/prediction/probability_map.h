#ifndef DOZEWELL_PREDICTION_PROBABILITY_MAP_H_
#define DOZEWELL_PREDICTION_PROBABILITY_MAP_H_

#include <cstddef>
#include <cstdint>
#include <vector>

namespace dozewell {

// The probability of every slot of a cycle, and which threshold it crosses as one bit a slot, so
// that a search over the cycle looks at 64 slots at a time.
class ProbabilityMap {
 public:
  // All slots start as unknown.
  explicit ProbabilityMap(int slotCount = 0);

  // A slot below `low` is idle, one at or above `high` is in use. Both start as 0.
  void SetThresholds(float low, float high);

  void Set(int slot, float probability);
  float Get(int slot) const { return probabilities_[static_cast<size_t>(slot)]; }

  // Both searches walk the slots behind `slot` once round the cycle, without `slot` itself, give up
  // at the first unknown slot, and return how many steps after `slot` they ended, 0 for nowhere.

  // The last slot of the first `run` idle slots in a row. A `run` of 0 is never found; it is at
  // most 64.
  int FindIdleRun(int slot, int run) const;
  // The first slot that is in use.
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
  // One kind of bit of 64 slots from `slot` on, round the cycle.
  uint64_t Window(int slot, uint64_t Bits::*kind) const;
  int Advance(int slot, int steps) const;

  int slotCount_;
  float low_ = 0.0F;
  float high_ = 0.0F;
  std::vector<float> probabilities_;
  // Behind the last slot the first 64 are repeated.
  std::vector<Bits> bits_;
};

}  // namespace dozewell

#endif  // DOZEWELL_PREDICTION_PROBABILITY_MAP_H_
