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

void SetBit(uint64_t& word, int bit, bool value) {
  word = (word & ~(uint64_t{1} << bit)) | uint64_t{value} << bit;
}

// The bits of `here` at which `run` bits in a row are set, where `next` goes on behind `here`.
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
      // One word more than the slots and their repetition, for the unaligned end of a window.
      bits_(static_cast<size_t>(slotCount) / kWordBits + 3, Bits{~uint64_t{0}, 0, 0}) {}

void ProbabilityMap::SetThresholds(float low, float high) {
  low_ = low;
  high_ = high;
}

void ProbabilityMap::Set(int slot, float probability) {
  probabilities_[static_cast<size_t>(slot)] = probability;
  const bool unknown = probability == kUnknownProbability;
  const bool idle = !unknown && low_ > probability;
  const bool inUse = !unknown && probability >= high_;
  for (int64_t position = slot; position < int64_t{slotCount_} + kWordBits;
       position += slotCount_) {
    Bits& bits = bits_[static_cast<size_t>(position) / kWordBits];
    const auto bit = static_cast<int>(position % kWordBits);
    SetBit(bits.unknown, bit, unknown);
    SetBit(bits.idle, bit, idle);
    SetBit(bits.inUse, bit, inUse);
  }
}

ProbabilityMap::Bits ProbabilityMap::Window(int slot) const {
  const Bits& first = bits_[static_cast<size_t>(slot) / kWordBits];
  const Bits& second = bits_[static_cast<size_t>(slot) / kWordBits + 1];
  const int shift = slot % kWordBits;
  // Two shifts, since one by the whole width is undefined.
  const auto join = [shift](uint64_t low, uint64_t high) {
    return low >> shift | high << 1 << (kWordBits - 1 - shift);
  };
  return {join(first.unknown, second.unknown), join(first.idle, second.idle),
          join(first.inUse, second.inUse)};
}

ProbabilityMap::Bits ProbabilityMap::Window(int slot, int slots) const {
  const Bits bits = Window(slot);
  const uint64_t mask = FirstBits(slots);
  return {bits.unknown & mask, bits.idle & mask, bits.inUse & mask};
}

int ProbabilityMap::Advance(int slot, int steps) const {
  const int64_t next = int64_t{slot} + steps;
  return static_cast<int>(next < slotCount_ ? next : next % slotCount_);
}

int ProbabilityMap::FindIdleRun(int slot, int run) const {
  if (run < 1) return 0;
  int position = Advance(slot, 1);
  for (int remaining = slotCount_ - 1; remaining > 0; remaining -= kWordBits) {
    const int following = Advance(position, kWordBits);
    const Bits here = Window(position, remaining);
    const Bits next = Window(following, remaining - kWordBits);
    const uint64_t starts = RunStarts(here.idle, next.idle, run);
    if ((starts | here.unknown) != 0) {
      const int start = std::countr_zero(starts);
      if (start > std::countr_zero(here.unknown)) return 0;
      return slotCount_ - 1 - remaining + start + run;
    }
    position = following;
  }
  return 0;
}

int ProbabilityMap::FindInUse(int slot) const {
  int position = Advance(slot, 1);
  for (int remaining = slotCount_ - 1; remaining > 0; remaining -= kWordBits) {
    const Bits here = Window(position, remaining);
    if ((here.inUse | here.unknown) != 0) {
      const int found = std::countr_zero(here.inUse);
      if (found > std::countr_zero(here.unknown)) return 0;
      return slotCount_ - remaining + found;
    }
    position = Advance(position, kWordBits);
  }
  return 0;
}

}  // namespace dozewell
