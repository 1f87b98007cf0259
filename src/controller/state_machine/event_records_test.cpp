#include "controller/state_machine/event_records.h"

#include <doctest/doctest.h>

#include <utility>

#include "fakes/clock_fake.h"

namespace dozewell {

TEST_CASE("an event carries the local time at which it was made") {
  fakes::clock = {1000, {1, 2, 3, 4, 5, 126, 4, 154, 1}};
  CHECK(SMEventData(SMEvent::Suspend).time == tm{1, 2, 3, 4, 5, 126, 4, 154, 1});
  CHECK(SMEventData(SMEvent::Suspend).event == SMEvent::Suspend);
}

TEST_CASE("an event made while the clock cannot be read has no time") {
  fakes::clock = {-1, {}};
  CHECK(SMEventData(SMEvent::Saving).time == tm{-1, -1, -1, -1, -1, -1, -1, -1, -1});
}

TEST_CASE("a parameter change takes the name from its caller") {
  fakes::clock = {};
  std::string shortName = "Strength";
  const ParamChangeEventData change(std::move(shortName));
  CHECK(change.event == SMEvent::ParamChanging);
  CHECK(change.param == "Strength");
  CHECK(shortName.empty());  // NOLINT(bugprone-use-after-move): that it is empty is the point
}

}  // namespace dozewell
