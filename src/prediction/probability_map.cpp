#include "prediction/probability_map.h"

#include <algorithm>
#include <bit>

#include "prediction/tracker.h"

namespace dozewell {
namespace {

constexpr int kWordBits = 64;

constexpr uint64_t FirstBits(int count) {
  return count >= kWordBits ? ~uint64_t{0} : (uint64_t{1} << std::max(count, 0)) - 1;
}

constexpr uint64_t AllBits(bool value) { return uint64_t{0} - uint64_t{value}; }

// The bits of `here` at which `run` bits in a row begin; `next` is the word behind `here`.
uint64_t RunStarts(uint64_t here, uint64_t next, int run) {
  for (int length = 1; length < run && here != 0;) {
    const int step = std::min(length, run - length);
    here &= here >> step | next << (kWordBits - step);
    next &= next >> step;
    length += step;
  }
  return here;
}

}  // namespace

ProbabilityMap::ProbabilityMap(int slotCount)
    : slotCount_(slotCount),
      probabilities_(static_cast<size_t>(slotCount), kUnknownProbability),
      // One word more than the slots and their repetition, since a window may end in it.
      bits_(static_cast<size_t>(slotCount) / kWordBits + 3, Classify(kUnknownProbability)) {}

void ProbabilityMap::SetThresholds(float low, float high) {
  low_ = low;
  high_ = high;
  for (int slot = 0; slot < slotCount_; ++slot) Write(slot, Classify(Get(slot)));
}

void ProbabilityMap::Set(int slot, float probability) {
  const Bits before = Classify(Get(slot));
  const Bits after = Classify(probability);
  probabilities_[static_cast<size_t>(slot)] = probability;
  if (after != before) Write(slot, after);
}

ProbabilityMap::Bits ProbabilityMap::Classify(float probability) const {
  const bool known = probability != kUnknownProbability;
  return {AllBits(!known), AllBits(known && low_ > probability),
          AllBits(known && probability >= high_)};
}

void ProbabilityMap::Write(int slot, const Bits& bits) {
  for (int64_t position = slot; position < int64_t{slotCount_} + kWordBits;
       position += slotCount_) {
    Bits& word = bits_[static_cast<size_t>(position) / kWordBits];
    const uint64_t mask = uint64_t{1} << position % kWordBits;
    const auto merge = [mask](uint64_t& all, uint64_t one) { all = (all & ~mask) | (one & mask); };
    merge(word.unknown, bits.unknown);
    merge(word.idle, bits.idle);
    merge(word.inUse, bits.inUse);
  }
}

uint64_t ProbabilityMap::Window(int slot, uint64_t Bits::*kind) const {
  const auto position = static_cast<unsigned>(slot);
  const Bits* const word = &bits_[position / kWordBits];
  const unsigned shift = position % kWordBits;
  // Two shifts, since one shift by the whole width is undefined.
  return word[0].*kind >> shift | word[1].*kind << 1 << (kWordBits - 1 - shift);
}

int ProbabilityMap::Advance(int slot, int steps) const {
  const int64_t next = int64_t{slot} + steps;
  return static_cast<int>(next < slotCount_ ? next : next % slotCount_);
}

int ProbabilityMap::FindIdleRun(int slot, int run) const {
  if (run < 1) return 0;
  int position = Advance(slot, 1);
  for (int remaining = slotCount_ - 1; remaining > 0; remaining -= kWordBits) {
    const uint64_t wanted = FirstBits(remaining);
    const uint64_t unknown = Window(position, &Bits::unknown) & wanted;
    const uint64_t idle = Window(position, &Bits::idle) & wanted;
    const int following = Advance(position, kWordBits);
    // Only idle slots before the first unknown one can begin a run, and none goes beyond it.
    if ((idle & (unknown - 1)) != 0) {
      const uint64_t next = Window(following, &Bits::idle) & FirstBits(remaining - kWordBits);
      const int start = std::countr_zero(RunStarts(idle, next, run));
      if (start < std::countr_zero(unknown)) return slotCount_ - 1 - remaining + start + run;
    }
    if (unknown != 0) return 0;
    position = following;
  }
  return 0;
}

int ProbabilityMap::FindInUse(int slot) const {
  int position = Advance(slot, 1);
  for (int remaining = slotCount_ - 1; remaining > 0; remaining -= kWordBits) {
    const uint64_t wanted = FirstBits(remaining);
    const uint64_t unknown = Window(position, &Bits::unknown) & wanted;
    const uint64_t inUse = Window(position, &Bits::inUse) & wanted;
    if ((inUse | unknown) != 0) {
      const int found = std::countr_zero(inUse);
      return found < std::countr_zero(unknown) ? slotCount_ - remaining + found : 0;
    }
    position = Advance(position, kWordBits);
  }
  return 0;
}

}  // namespace dozewell
