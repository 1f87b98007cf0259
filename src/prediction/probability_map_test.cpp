#include "prediction/probability_map.h"

#include <doctest/doctest.h>

#include <random>

#include "prediction/tracker.h"

namespace dozewell {
namespace {

constexpr float kIdle = 0.1F;
constexpr float kBusy = 0.9F;
constexpr float kBetween = 0.5F;

ProbabilityMap MapOf(const std::vector<float>& probabilities) {
  ProbabilityMap map(static_cast<int>(probabilities.size()));
  map.SetThresholds(0.3F, 0.7F);
  for (size_t i = 0; i < probabilities.size(); ++i) map.Set(static_cast<int>(i), probabilities[i]);
  return map;
}

int PlainFindIdleRun(const std::vector<float>& probabilities, int slot, int run) {
  const auto slotCount = static_cast<int>(probabilities.size());
  int count = 0;
  for (int j = 1; j < slotCount; ++j) {
    const float probability = probabilities[static_cast<size_t>((slot + j) % slotCount)];
    if (probability == kUnknownProbability) return 0;
    count = 0.3F > probability ? count + 1 : 0;
    if (count == run && count > 0) return j;
  }
  return 0;
}

int PlainFindInUse(const std::vector<float>& probabilities, int slot) {
  const auto slotCount = static_cast<int>(probabilities.size());
  for (int j = 1; j < slotCount; ++j) {
    const float probability = probabilities[static_cast<size_t>((slot + j) % slotCount)];
    if (probability == kUnknownProbability) return 0;
    if (probability >= 0.7F) return j;
  }
  return 0;
}

}  // namespace

TEST_CASE("every slot of a new map is unknown") {
  const ProbabilityMap map(100);
  CHECK(map.Get(0) == -1.0F);
  CHECK(map.Get(99) == -1.0F);
  CHECK(map.FindIdleRun(5, 1) == 0);
  CHECK(map.FindInUse(5) == 0);
}

TEST_CASE("a slot is idle below the low threshold and in use at or above the high one") {
  ProbabilityMap map(3);
  map.SetThresholds(0.5F, 0.5F);
  map.Set(0, kBetween);
  map.Set(1, kBetween);
  map.Set(2, 0.49999997F);
  CHECK(map.FindInUse(0) == 1);
  CHECK(map.FindIdleRun(0, 1) == 2);
}

TEST_CASE("the slot itself is not looked at, and the search ends before it") {
  const ProbabilityMap map = MapOf({kIdle, kBetween, kBetween, kBetween});
  CHECK(map.FindIdleRun(0, 1) == 0);
  CHECK(map.FindIdleRun(1, 1) == 3);
  CHECK(map.FindIdleRun(3, 1) == 1);
}

TEST_CASE("a run of length 0 and one longer than the cycle are never found") {
  const ProbabilityMap map = MapOf({kIdle, kIdle, kIdle});
  CHECK(map.FindIdleRun(0, 0) == 0);
  CHECK(map.FindIdleRun(0, 2) == 2);
  CHECK(map.FindIdleRun(0, 3) == 0);
}

TEST_CASE("a map of one slot finds nothing") {
  const ProbabilityMap map = MapOf({kIdle});
  CHECK(map.FindIdleRun(0, 1) == 0);
  CHECK(map.FindInUse(0) == 0);
}

TEST_CASE("an unknown slot ends a search, unless it lies behind the slots that are found") {
  const ProbabilityMap map =
      MapOf({kBetween, kIdle, kIdle, kUnknownProbability, kBusy, kIdle, kIdle, kIdle});
  CHECK(map.FindIdleRun(0, 2) == 2);
  CHECK(map.FindIdleRun(0, 3) == 0);
  CHECK(map.FindIdleRun(3, 3) == 4);
  CHECK(map.FindInUse(0) == 0);
  CHECK(map.FindInUse(3) == 1);
}

TEST_CASE("searches find the same as a loop over the slots, at every length and position") {
  std::mt19937_64 random(7);
  for (const int slotCount : {1, 2, 3, 31, 63, 64, 65, 127, 128, 129, 200, 1008}) {
    for (int round = 0; round < 30; ++round) {
      std::vector<float> probabilities(static_cast<size_t>(slotCount), kIdle);
      const uint64_t sparseness = uint64_t{1} << (random() % 9);
      for (float& probability : probabilities) {
        if (random() % sparseness == 0) probability = random() % 3 == 0 ? kBusy : kBetween;
        if (random() % (sparseness * 16) == 0) probability = kUnknownProbability;
      }
      const ProbabilityMap map = MapOf(probabilities);
      for (int slot = 0; slot < slotCount; ++slot) {
        REQUIRE(map.FindInUse(slot) == PlainFindInUse(probabilities, slot));
        for (const int run : {1, 2, 3, 6, 15, 30, 64}) {
          REQUIRE(map.FindIdleRun(slot, run) == PlainFindIdleRun(probabilities, slot, run));
        }
      }
    }
  }
}

}  // namespace dozewell
