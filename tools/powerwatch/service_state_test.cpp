#include "powerwatch/service_state.h"

#include <doctest/doctest.h>

#include <initializer_list>

namespace dozewell::powerwatch {

TEST_CASE(
    "a control leaves the watch in the state that the Dozewell service would be in, or ends it") {
  constexpr uint32_t kRunning = 4;
  constexpr uint32_t kPaused = 7;
  CHECK(StateAfter(1, kRunning) == 3);
  CHECK(StateAfter(5, kRunning) == 3);
  CHECK(StateAfter(2, kRunning) == kPaused);
  CHECK(StateAfter(3, kPaused) == kRunning);
  for (const uint32_t control : {4, 13, 14, 200}) {
    CHECK(StateAfter(control, kRunning) == kRunning);
    CHECK(StateAfter(control, kPaused) == kPaused);
  }
}

}  // namespace dozewell::powerwatch
