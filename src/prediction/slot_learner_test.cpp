#include "prediction/slot_learner.h"

#include <doctest/doctest.h>

#include <optional>
#include <utility>

#include "base/exception.h"
#include "fakes/configurations_fake.h"
#include "support/local_times.h"
#include "support/tracker_data.h"

namespace dozewell {
namespace {

constexpr CycleShape kWeek = {7, 1440, 15};

void CheckRange(const std::optional<SlotRange>& range, int64_t first, int64_t last) {
  REQUIRE(range.has_value());
  CHECK(range->first == first);
  CHECK(range->last == last);
}

}  // namespace

TEST_CASE("the first event only records its state and time") {
  SlotLearner learner(kWeek);
  learner.ProcessEvent({WeekTime(0, 8), Suspend});
  CHECK(learner.Data().lastState == Suspend);
  CHECK(learner.Data().lastTime == WeekTime(0, 8));
  for (int slot = 0; slot < kSlotsPerWeek; ++slot)
    REQUIRE(learner.Data().Slots()[slot] == kEmptySlot);
}

TEST_CASE("the first event after the container stopped only records its state and time") {
  fakes::Configurations configuration;
  TrackerDataPtr data = NewData(configuration);
  data->lastState = ContainerStopped;
  data->lastTime = WeekTime(0, 8);
  SlotLearner learner(std::move(data));
  learner.ProcessEvent({WeekTime(0, 20), Activating});
  CHECK(learner.Data().lastState == Activating);
  CHECK(learner.Data().lastTime == WeekTime(0, 20));
  for (int slot = 0; slot < kSlotsPerWeek; ++slot)
    REQUIRE(learner.Data().Slots()[slot] == kEmptySlot);
}

TEST_CASE("the learner refuses the container's stop") {
  SlotLearner learner(kWeek);
  CHECK_THROWS_WITH_AS(learner.ProcessEvent({WeekTime(0, 8), ContainerStopped}),
                       "ContainerStopped should not be passed to the ProbabilityTracker",
                       FixedTextException);
}

TEST_CASE("a shut-down does not restart the inactive stretch that a suspend began") {
  SlotLearner learner(kWeek);
  learner.ProcessEvent({WeekTime(0, 8), Suspend});
  learner.ProcessEvent({WeekTime(0, 9), ShuttingDown});
  CHECK(learner.Data().lastState == Suspend);
  CHECK(learner.Data().lastTime == WeekTime(0, 8));
  learner.ProcessEvent({WeekTime(0, 10), Activating});
  for (int slot = 0; slot < kSlotsPerWeek; ++slot) {
    const bool marked = slot > Slot(0, 8) && slot < Slot(0, 10);
    REQUIRE(learner.Data().Slots()[slot].last == (marked ? 0 : -1));
  }
}

TEST_CASE("an unnamed inactive state is not merged with the others") {
  SlotLearner learner(kWeek);
  learner.ProcessEvent({WeekTime(0, 8), Suspend});
  learner.ProcessEvent({WeekTime(0, 9), 3});
  CHECK(learner.Data().lastState == 3);
  CHECK(learner.Data().Slots()[Slot(0, 8, 15)].last == 0);
  learner.ProcessEvent({WeekTime(0, 10), 3});
  CHECK(learner.Data().lastTime == WeekTime(0, 10));
  CHECK(learner.Data().Slots()[Slot(0, 9, 15)].last == 0);
}

TEST_CASE("a repeated activation does not restart the stretch in use") {
  SlotLearner learner(kWeek);
  learner.ProcessEvent({WeekTime(0, 8), Activating});
  learner.ProcessEvent({WeekTime(0, 9), Activating});
  CHECK(learner.Data().lastTime == WeekTime(0, 8));
}

TEST_CASE("use marks every slot that it touches, idleness only slots wholly inside") {
  SlotLearner used(kWeek);
  used.ProcessEvent({WeekTime(0, 10, 5), Activating});
  used.ProcessEvent({WeekTime(0, 10, 20), Suspend});
  const int64_t start = SecondsFromTm(WeekTime(0, 10, 5));
  CHECK(used.Data().Slots()[Slot(0, 9, 45)] == kEmptySlot);
  CHECK(used.Data().Slots()[Slot(0, 10)] == SlotRecord{-1, -1, -1, 1, start});
  CHECK(used.Data().Slots()[Slot(0, 10, 15)] == SlotRecord{-1, -1, -1, 1, start + 900});
  CHECK(used.Data().Slots()[Slot(0, 10, 30)] == kEmptySlot);

  SlotLearner idle(kWeek);
  idle.ProcessEvent({WeekTime(0, 10, 5), Suspend});
  idle.ProcessEvent({WeekTime(0, 10, 20), Activating});
  for (int slot = 0; slot < kSlotsPerWeek; ++slot) REQUIRE(idle.Data().Slots()[slot] == kEmptySlot);
  CHECK(idle.Data().lastState == Activating);
}

TEST_CASE("use within a slot's length of its stamp does not mark that slot again") {
  SlotLearner learner(kWeek);
  learner.ProcessEvent({WeekTime(0, 10, 1), Activating});
  learner.ProcessEvent({WeekTime(0, 10, 2), Suspend});
  learner.ProcessEvent({WeekTime(0, 10, 3), Activating});
  learner.ProcessEvent({WeekTime(0, 10, 4), Suspend});
  const SlotRecord once = {-1, -1, -1, 1, SecondsFromTm(WeekTime(0, 10, 1))};
  CHECK(learner.Data().Slots()[Slot(0, 10)] == once);
  CHECK(learner.Data().lastTime == WeekTime(0, 10, 4));

  learner.ProcessEvent({WeekTime(0, 10, 5), Activating});
  learner.ProcessEvent({WeekTime(0, 10, 20), Suspend});
  CHECK(learner.Data().Slots()[Slot(0, 10)] == once);
  CHECK(learner.Data().Slots()[Slot(0, 10, 15)] ==
        SlotRecord{-1, -1, -1, 1, SecondsFromTm(WeekTime(0, 10, 5))});
}

TEST_CASE("use a slot's length after its stamp marks the slot again") {
  fakes::Configurations configuration;
  TrackerDataPtr data = NewData(configuration);
  const int64_t start = SecondsFromTm(WeekTime(0, 10, 14));
  data->Slots()[Slot(0, 10)] = {-1, -1, -1, 1, start - 900};
  SlotLearner learner(std::move(data));
  learner.ProcessEvent({WeekTime(0, 10, 14), Activating});
  learner.ProcessEvent({WeekTime(0, 10, 14, 30), Suspend});
  CHECK(learner.Data().Slots()[Slot(0, 10)] == SlotRecord{-1, -1, 1, 1, start});
}

TEST_CASE("observations move from last to second-last to the older ones") {
  SlotLearner learner(kWeek);
  const SlotRecord expected[] = {
      {-1, -1, -1, 1, 0}, {-1, -1, 1, 0, 0}, {1, 1, 0, 1, 0}, {2, 1, 1, 1, 0}, {3, 2, 1, 0, 0}};
  const bool inUse[] = {true, false, true, true, false};
  for (int week = 0; week < 5; ++week) {
    const auto at = [week](int hour, int minute) {
      return LocalTime(2026, 11, 19 + 7 * week, hour, minute);
    };
    if (inUse[week]) {
      learner.ProcessEvent({at(10, 0), Activating});
      learner.ProcessEvent({at(10, 50), Suspend});
      CHECK(learner.Data().Slots()[Slot(0, 10, 30)].inUseStamp == SecondsFromTm(at(10, 30)));
    } else {
      learner.ProcessEvent({at(8, 0), Activating});
      learner.ProcessEvent({at(9, 0), Suspend});
      learner.ProcessEvent({at(12, 0), Activating});
      learner.ProcessEvent({at(13, 0), Suspend});
    }
    SlotRecord slot = learner.Data().Slots()[Slot(0, 10, 30)];
    slot.inUseStamp = 0;
    CHECK(slot == expected[week]);
  }
}

TEST_CASE("a stretch of idleness leaves the stamps of the last use") {
  SlotLearner learner(kWeek);
  learner.ProcessEvent({WeekTime(0, 10), Activating});
  learner.ProcessEvent({WeekTime(0, 10, 20), Suspend});
  const int64_t stamp = SecondsFromTm(WeekTime(0, 10));
  CHECK(learner.Data().Slots()[Slot(0, 10)] == SlotRecord{-1, -1, -1, 1, stamp});
  learner.ProcessEvent({WeekTime(6, 20), Activating});
  learner.ProcessEvent({WeekTime(6, 21), Suspend});
  learner.ProcessEvent({WeekTime(7, 12), Activating});
  CHECK(learner.Data().Slots()[Slot(0, 10)] == SlotRecord{-1, -1, 1, 0, stamp});
}

TEST_CASE("without a last observation the second-last one stays and also counts as an older one") {
  fakes::Configurations configuration;
  TrackerDataPtr data = NewData(configuration);
  data->Slots()[Slot(0, 10)] = {-1, -1, 1, -1, -1};
  SlotLearner learner(std::move(data));
  learner.ProcessEvent({WeekTime(0, 9), Suspend});
  learner.ProcessEvent({WeekTime(0, 11), Activating});
  CHECK(learner.Data().Slots()[Slot(0, 10)] == SlotRecord{1, 1, 1, 0, -1});
}

TEST_CASE("a stretch longer than a cycle marks only its remainder modulo the cycle") {
  SlotLearner learner(kWeek);
  learner.ProcessEvent({WeekTime(0, 10), Activating});
  learner.ProcessEvent({WeekTime(7 + 1, 9), Suspend});
  const int64_t start = SecondsFromTm(WeekTime(0, 10));
  for (int slot = 0; slot < kSlotsPerWeek; ++slot) {
    const bool marked = slot >= Slot(0, 10) && slot <= Slot(1, 9);
    const SlotRecord once = {-1, -1, -1, 1, start + (slot - Slot(0, 10)) * 900};
    REQUIRE(learner.Data().Slots()[slot] == (marked ? once : kEmptySlot));
  }
}

TEST_CASE("a stretch over the end of the cycle goes on at its beginning") {
  SlotLearner learner(kWeek);
  learner.ProcessEvent({WeekTime(6, 23), Activating});
  learner.ProcessEvent({WeekTime(7, 1), Suspend});
  for (int slot = 0; slot < kSlotsPerWeek; ++slot) {
    const bool marked = slot >= Slot(6, 23) || slot <= Slot(0, 1);
    REQUIRE(learner.Data().Slots()[slot].last == (marked ? 1 : -1));
  }
  CHECK(learner.Data().Slots()[Slot(0, 1)].inUseStamp == SecondsFromTm(WeekTime(7, 1)));
}

TEST_CASE("events that do not follow their predecessor are refused and change nothing") {
  fakes::Configurations configuration;
  SlotLearner learner(kWeek);
  learner.ProcessEvent({WeekTime(0, 10), Activating});
  const TrackerDataPtr before = CopyOf(learner.Data());
  CHECK_THROWS_WITH_AS(learner.ProcessEvent({WeekTime(0, 10), Suspend}),
                       "state start is later than state end", FixedTextException);
  CHECK_THROWS_WITH_AS(learner.ProcessEvent({WeekTime(0, 9), Suspend}),
                       "state start is later than state end", FixedTextException);
  CHECK_THROWS_WITH_AS(learner.ProcessEvent({LocalTime(1960, 1, 1), Suspend}), "wrong time ...",
                       FixedTextException);
  CHECK(SameBytes(learner.Data(), *before));

  TrackerDataPtr data = NewData(configuration);
  data->lastState = Activating;
  data->lastTime = {0, 0, 0, 1, 0, 60, 0, 0, 0};
  SlotLearner wrongStart(std::move(data));
  CHECK_THROWS_WITH_AS(wrongStart.ProcessEvent({WeekTime(0, 10), Suspend}), "wrong time ...",
                       FixedTextException);
}

TEST_CASE("after an event without a time the next event is taken as the first one") {
  SlotLearner learner(kWeek);
  learner.ProcessEvent({{-1, -1, -1, -1, -1, -1, -1, -1, -1}, Activating});
  learner.ProcessEvent({WeekTime(0, 10), Activating});
  CHECK(learner.Data().lastTime == WeekTime(0, 10));
}

TEST_CASE("each event returns the slots that got an observation, counted on beyond the cycle") {
  SlotLearner learner(kWeek);
  CHECK_FALSE(learner.ProcessEvent({WeekTime(0, 8, 5), Activating}).has_value());
  CheckRange(learner.ProcessEvent({WeekTime(0, 8, 35), Suspend}), Slot(0, 8), Slot(0, 8, 30));
  CheckRange(learner.ProcessEvent({WeekTime(0, 9, 5), Activating}), Slot(0, 8, 45), Slot(0, 8, 45));
  CHECK_FALSE(learner.ProcessEvent({WeekTime(0, 9, 20), Activating}).has_value());
  CheckRange(learner.ProcessEvent({WeekTime(6, 23), Suspend}), Slot(0, 9), Slot(6, 23));
  CHECK_FALSE(learner.ProcessEvent({WeekTime(6, 23, 5), Activating}).has_value());
  CheckRange(learner.ProcessEvent({WeekTime(7, 1), Suspend}), Slot(6, 23, 15), Slot(7, 1));
}

TEST_CASE("a time is in a slot of the cycle") {
  const SlotLearner learner(kWeek);
  CHECK(learner.SlotAt(SecondsFromTm(WeekTime(0, 0))) == 0);
  CHECK(learner.SlotAt(SecondsFromTm(WeekTime(6, 23, 59, 59))) == 671);
  CHECK(learner.SlotAt(SecondsFromTm(WeekTime(7, 0, 15))) == 1);
}

}  // namespace dozewell
