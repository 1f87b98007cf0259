#include "power/power_capabilities.h"

#include <doctest/doctest.h>

#include <cstddef>
#include <cstdint>
#include <utility>

namespace dozewell {

TEST_CASE("a timer's wake from hibernation takes a clock that wakes from so deep") {
  PowerCapabilities capabilities;
  CHECK_FALSE(capabilities.HasTimerWakeFromS4());
  for (const auto& [deepest, has] :
       {std::pair{0, false}, {1, false}, {4, false}, {5, true}, {6, true}}) {
    capabilities.bytes[64] = static_cast<uint8_t>(deepest);
    CHECK(capabilities.HasTimerWakeFromS4() == has);
  }
}

TEST_CASE("each way to sleep has a byte of its own") {
  struct Row {
    size_t byte;
    bool (PowerCapabilities::*has)() const;
  };
  constexpr Row kRows[] = {
      {3, &PowerCapabilities::HasS1},
      {4, &PowerCapabilities::HasS2},
      {5, &PowerCapabilities::HasS3},
      {6, &PowerCapabilities::HasS4},
      {8, &PowerCapabilities::HasHibernationFile},
      {18, &PowerCapabilities::CanStartFast},
      {19, &PowerCapabilities::HasWakeAlarm},
      {20, &PowerCapabilities::HasModernStandby},
  };
  for (const Row& set : kRows) {
    PowerCapabilities capabilities;
    capabilities.bytes[set.byte] = 1;
    for (const Row& asked : kRows) {
      CHECK((capabilities.*asked.has)() == (asked.byte == set.byte));
    }
  }
}

}  // namespace dozewell
