#ifndef DOZEWELL_TESTS_FAKES_CLOCK_FAKE_H_
#define DOZEWELL_TESTS_FAKES_CLOCK_FAKE_H_

#include <cstdint>
#include <functional>

#include "base/wall_clock.h"

namespace dozewell::fakes {

// What base's clock answers; a utcSeconds of -1 is a clock that cannot be read.
struct Clock {
  int64_t utcSeconds = 0;
  tm localTime = {0, 0, 0, 1, 0, 70, 4, 0, 0};
  // What happens while the local time is read.
  std::function<void()> whileRead = [] {};
  // What happens while the UTC time is read.
  std::function<void()> whileUtcRead = [] {};
};
extern Clock clock;

}  // namespace dozewell::fakes

#endif  // DOZEWELL_TESTS_FAKES_CLOCK_FAKE_H_
