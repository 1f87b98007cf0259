#include "fakes/clock_fake.h"

#include "base/clock.h"

namespace dozewell {

fakes::Clock fakes::clock;

int64_t UtcSecondsNow() {
  fakes::clock.whileUtcRead();
  return fakes::clock.utcSeconds;
}

bool LocalTimeNow(tm& time) {
  fakes::clock.whileRead();
  if (fakes::clock.utcSeconds == -1) return false;
  time = fakes::clock.localTime;
  return true;
}

}  // namespace dozewell
