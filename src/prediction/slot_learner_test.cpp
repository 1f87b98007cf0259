#include "prediction/slot_learner.h"

#include <doctest/doctest.h>

#include <cstdlib>
#include <optional>
#include <utility>

#include "base/exception.h"

namespace dozewell {
namespace {

constexpr CycleShape kWeek = {7, 1440, 10};
constexpr int kSlots = 1008;
constexpr int64_t kSecondsPerDay = 86400;

constexpr int64_t Time(int day, int hour, int minute) {
  return day * kSecondsPerDay + hour * 3600 + minute * 60;
}

std::optional<SlotRange> Learn(SlotLearner& learner, int64_t seconds, TimeLineState state) {
  TimeLineEvent event;
  TmFromSeconds(seconds, event.time);
  event.state = state;
  return learner.ProcessEvent(event);
}

void CheckRange(const std::optional<SlotRange>& range, int64_t first, int64_t last) {
  REQUIRE(range.has_value());
  CHECK(range->first == first);
  CHECK(range->last == last);
}

constexpr SlotRecord kBlank = {kNone, kNone, kNone, kNone, kNone};

}  // namespace

TEST_CASE("a use marks every slot that it touches, with its time") {
  SlotLearner learner(kWeek);
  CHECK_FALSE(Learn(learner, Time(0, 8, 5), Activating).has_value());
  CheckRange(Learn(learner, Time(0, 8, 25), Suspend), 48, 50);
  const SlotRecord* const slots = learner.Data().Slots();
  CHECK(slots[47] == kBlank);
  CHECK(slots[48] == SlotRecord{kNone, kNone, kNone, 1, Time(0, 8, 5)});
  CHECK(slots[49] == SlotRecord{kNone, kNone, kNone, 1, Time(0, 8, 15)});
  CHECK(slots[50] == SlotRecord{kNone, kNone, kNone, 1, Time(0, 8, 25)});
  CHECK(slots[51] == kBlank);
}

TEST_CASE("a sleep marks the slots that lie wholly inside it") {
  SlotLearner learner(kWeek);
  Learn(learner, Time(0, 8, 25), Suspend);
  CheckRange(Learn(learner, Time(0, 9, 5), Activating), 51, 53);
  const SlotRecord* const slots = learner.Data().Slots();
  CHECK(slots[50] == kBlank);
  CHECK(slots[51] == SlotRecord{kNone, kNone, kNone, 0, kNone});
  CHECK(slots[53] == SlotRecord{kNone, kNone, kNone, 0, kNone});
  CHECK(slots[54] == kBlank);
}

TEST_CASE("nothing is learnt of stretches too short for a slot and of states that repeat") {
  SlotLearner learner(kWeek);
  Learn(learner, Time(0, 8, 0), Activating);
  CHECK_FALSE(Learn(learner, Time(0, 8, 30), Activating).has_value());
  CheckRange(Learn(learner, Time(0, 9, 1), Suspend), 48, 54);
  CHECK_FALSE(Learn(learner, Time(0, 9, 2), ShuttingDown).has_value());
  CHECK_FALSE(Learn(learner, Time(0, 9, 4), Activating).has_value());
  // The slot is marked as in use already.
  CHECK_FALSE(Learn(learner, Time(0, 9, 8), Suspend).has_value());
  CHECK(learner.Data().Slots()[54] == SlotRecord{kNone, kNone, kNone, 1, Time(0, 9, 0)});
}

TEST_CASE("older observations move on and are added up") {
  SlotLearner learner(kWeek);
  const auto use = [&learner](int day) {
    Learn(learner, Time(day, 8, 0), Activating);
    Learn(learner, Time(day, 8, 5), Suspend);
  };
  int week = 0;
  for (const bool used : {true, true, false, true, false}) {
    if (used) use(7 * week);
    use(7 * week + 3);
    ++week;
  }
  const SlotRecord* const slots = learner.Data().Slots();
  CHECK(slots[48] == SlotRecord{3, 2, 1, 0, Time(21, 8, 0)});
  CHECK(slots[49] == SlotRecord{3, 0, 0, 0, kNone});
}

TEST_CASE("what is learnt may go beyond the end of the cycle") {
  SlotLearner learner(kWeek);
  Learn(learner, Time(6, 23, 50), Activating);
  CheckRange(Learn(learner, Time(7, 0, 10), Suspend), 1007, kSlots + 1);
  const SlotRecord* const slots = learner.Data().Slots();
  CHECK(slots[1007].inUseStamp == Time(6, 23, 50));
  CHECK(slots[0].inUseStamp == Time(7, 0, 0));
  CHECK(slots[1].inUseStamp == Time(7, 0, 10));
  CHECK(learner.SlotAt(Time(7, 0, 10)) == 1);
}

TEST_CASE("learning goes on from the data of another learner") {
  TrackerDataPtr data(
      static_cast<TrackerData*>(std::calloc(1, static_cast<size_t>(TrackerDataSize(kSlots)))));
  *data = {0, 7, 1440, 10, Activating, {}, kSlots, 0};
  TmFromSeconds(Time(0, 8, 0), data->lastTime);
  data->Slots()[48] = {5, 2, 1, 0, Time(-7, 8, 0)};
  SlotLearner learner(std::move(data));
  CheckRange(Learn(learner, Time(0, 8, 5), Suspend), 48, 48);
  CHECK(learner.Data().Slots()[48] == SlotRecord{6, 3, 0, 1, Time(0, 8, 0)});
}

TEST_CASE("an event that does not follow the last one is refused and changes nothing") {
  SlotLearner learner(kWeek);
  Learn(learner, Time(0, 8, 0), Activating);
  CHECK_THROWS_WITH_AS(Learn(learner, Time(0, 8, 0), Suspend),
                       "state start is later than state end", FixedTextException);
  CHECK_THROWS_WITH_AS(Learn(learner, Time(0, 9, 0), ContainerStopped),
                       "ContainerStopped should not be passed to the ProbabilityTracker",
                       FixedTextException);
  CHECK(learner.Data().lastState == Activating);
  CHECK(SecondsFromTm(learner.Data().lastTime) == Time(0, 8, 0));
  CHECK(learner.Data().Slots()[48] == kBlank);
}

}  // namespace dozewell
