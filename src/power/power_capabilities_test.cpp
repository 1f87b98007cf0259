#include "power/power_capabilities.h"

#include <doctest/doctest.h>

#include <cstddef>

namespace dozewell {

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
