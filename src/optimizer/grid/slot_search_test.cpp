#include "optimizer/grid/slot_search.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

namespace dozewell {
namespace {

constexpr float kUnknown = kUnknownProbability;
const float kNaN = std::numeric_limits<float>::quiet_NaN();

// The slots after a start, each with its probability; equal neighbours make one run.
struct Slots {
  std::vector<int32_t> ends;
  std::vector<float> probabilities;

  explicit Slots(const std::vector<float>& slots) {
    for (const float slot : slots) {
      if (!probabilities.empty() && probabilities.back() == slot) {
        ++ends.back();
      } else {
        ends.push_back((ends.empty() ? 1 : ends.back()) + 1);
        probabilities.push_back(slot);
      }
    }
  }
  SlotCursor Walk() const { return SlotCursor(ends, probabilities); }
};

// The stretches that the search finds, as "first slot: thresholds".
std::vector<std::string> IdleStretches(const std::vector<float>& slots,
                                       const std::vector<float>& thresholds) {
  const Slots made(slots);
  IdleSearch search(made.Walk(), thresholds, {0, static_cast<uint32_t>(thresholds.size())});
  std::vector<std::string> found;
  while (search.Next()) {
    found.push_back(std::to_string(search.FirstSlot().Slot()) + ": " +
                    std::to_string(search.Lows().begin) + "-" + std::to_string(search.Lows().end));
  }
  return found;
}

std::vector<std::string> Uses(const std::vector<float>& slots,
                              const std::vector<float>& thresholds) {
  const Slots made(slots);
  UseSearch search(made.Walk(), thresholds);
  std::vector<std::string> found;
  while (search.Next()) {
    found.push_back(std::to_string(search.Slot().Slot()) + ": " +
                    std::to_string(search.Highs().begin) + "-" +
                    std::to_string(search.Highs().end));
  }
  return found;
}

using Found = std::vector<std::string>;

}  // namespace

TEST_CASE("each threshold finds the first three slots in a row that lie below it") {
  CHECK(IdleStretches({0, 0, 0}, {0.1F, 0.5F}) == Found{"1: 0-2"});
  CHECK(IdleStretches({0, 0}, {0.1F}) == Found{});
  CHECK(IdleStretches({0.5F, 0.5F, 0.5F}, {0.5F}) == Found{});
  CHECK(IdleStretches({1, 0.2F, 0.3F, 0.2F, 0.2F, 0, 0, 0, 0}, {0, 0.1F, 0.25F, 0.5F}) ==
        Found{"2: 3-4", "4: 2-3", "6: 1-2"});
  CHECK(IdleStretches({0, 0, 1, 0, 0.2F, 0, 0, 0}, {0.1F, 0.5F}) == Found{"4: 1-2", "6: 0-1"});
}

TEST_CASE("each threshold finds the first slot that does not lie below it") {
  CHECK(Uses({0, 0.5F, 0.5F, 1}, {0.5F, 0.7F, 1}) == Found{"2: 0-1", "4: 1-3"});
  CHECK(Uses({0.7F}, {0.1F, 0.5F, 0.9F}) == Found{"1: 0-2"});
  CHECK(Uses({0, 0, 0}, {0.1F}) == Found{});
}

TEST_CASE("no search goes beyond an unknown slot") {
  CHECK(IdleStretches({0, 0, kUnknown, 0, 0, 0}, {0.5F}) == Found{});
  CHECK(IdleStretches({0, 0, 0, kUnknown}, {0.5F}) == Found{"1: 0-1"});
  CHECK(Uses({0, kUnknown, 1}, {0.5F}) == Found{});
  CHECK(Uses({}, {0.5F}) == Found{});
}

TEST_CASE("not-a-number is neither idle nor in use") {
  CHECK(IdleStretches({0, 0, kNaN, 0, 0, 0}, {0.5F}) == Found{"4: 0-1"});
  CHECK(Uses({kNaN, 1}, {-2, 0.5F}) == Found{"2: 0-2"});
}

TEST_CASE("a search covers the cycle up to the slot before its start") {
  std::vector<float> slots(1010, 1);
  slots[1005] = slots[1006] = slots[1007] = 0;  // 1006 to 1008
  CHECK(IdleStretches(slots, {0.5F}) == Found{});
  slots[1004] = 0;
  CHECK(IdleStretches(slots, {0.5F}) == Found{"1005: 0-1"});
  std::fill(slots.begin(), slots.end(), 0.0F);
  slots[1007] = 1;  // slot 1008, which is the start's own slot a cycle later
  CHECK(Uses(slots, {0.5F}) == Found{});
  slots[1006] = 1;
  CHECK(Uses(slots, {0.5F}) == Found{"1007: 0-1"});
}

TEST_CASE("a search that starts where another one ended looks at a cycle of its own") {
  std::vector<float> slots(2000, 0);
  slots[1500] = 1;
  const Slots made(slots);
  const std::vector<float> thresholds = {0.5F};
  IdleSearch idle(made.Walk(), thresholds, {0, 1});
  REQUIRE(idle.Next());
  CHECK_FALSE(UseSearch(idle.FirstSlot(), thresholds).Next());
  slots[1008] = 1;  // slot 1009; a search from slot 1 ends with slot 1008
  slots[1500] = 0;
  const Slots later(slots);
  IdleSearch idleLater(later.Walk(), thresholds, {0, 1});
  REQUIRE(idleLater.Next());
  CHECK_FALSE(UseSearch(idleLater.FirstSlot(), thresholds).Next());
  slots[1007] = 1;
  const Slots inTime(slots);
  IdleSearch idleInTime(inTime.Walk(), thresholds, {0, 1});
  REQUIRE(idleInTime.Next());
  UseSearch use(idleInTime.FirstSlot(), thresholds);
  REQUIRE(use.Next());
  CHECK(use.Slot().Slot() == 1008);
}

}  // namespace dozewell
