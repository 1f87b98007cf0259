#include "common/slot_knowledge.h"

#include <doctest/doctest.h>

#include <cstddef>
#include <utility>
#include <vector>

#include "support/mornings.h"
#include "support/tracker_data.h"

namespace dozewell {
namespace {

// What is known of Tuesday and of Wednesday, 12:00, when a Monday's and a Tuesday's slots are
// these.
std::pair<SlotKnowledge, SlotKnowledge> TuesdayAndWednesday(const char* grouping,
                                                            const SlotRecord& monday,
                                                            const SlotRecord& tuesday) {
  fakes::Configurations configuration;
  configuration.values["DayGrouping"] = grouping;
  TrackerDataPtr data = NewData(configuration);
  data->Slots()[Slot(4, 12)] = monday;
  data->Slots()[Slot(5, 12)] = tuesday;
  ArbitraryCycleProbabilityTracker tracker(&configuration, std::move(data));
  const std::vector<SlotKnowledge> slots = KnowledgeOfSlots(tracker);
  REQUIRE(slots.size() == size_t{kSlotsPerWeek});
  return {slots[Slot(5, 12)], slots[Slot(6, 12)]};
}

// Of Tuesday's slot.
int64_t Seen(const char* grouping, const SlotRecord& monday, const SlotRecord& tuesday) {
  return TuesdayAndWednesday(grouping, monday, tuesday).first.seen;
}

constexpr SlotRecord kOnce = {-1, -1, -1, 1, 0};
constexpr SlotRecord kTwice = {-1, -1, 1, 1, 0};
constexpr SlotRecord kOften = {7, 3, 0, 1, 0};
constexpr const char* kAlone = "0";
constexpr const char* kWeekends = "12";

}  // namespace

TEST_CASE("a slot that counts alone was seen as often as its own observations say") {
  CHECK(Seen(kAlone, kOften, kEmptySlot) == 0);
  CHECK(Seen(kAlone, kOften, kOnce) == 1);
  CHECK(Seen(kAlone, kEmptySlot, kTwice) == 2);
  CHECK(Seen(kAlone, kEmptySlot, kOften) == 9);
}

TEST_CASE("one Monday makes every working day known, and each of them seen once") {
  const auto [tuesday, wednesday] = TuesdayAndWednesday(kWeekends, kOnce, kEmptySlot);
  CHECK(tuesday == SlotKnowledge{1.0F, 1});
  CHECK(wednesday == SlotKnowledge{1.0F, 1});
  // The day itself counts its one observation twice when it estimates, but it was seen once.
  CHECK(Seen(kWeekends, kEmptySlot, kOnce) == 1);
}

TEST_CASE(
    "days that count together were seen on two of them, and as often as all have older ones") {
  CHECK(Seen(kWeekends, kOnce, kOnce) == 2);
  CHECK(Seen(kWeekends, kTwice, kEmptySlot) == 1);
  CHECK(Seen(kWeekends, kOften, kOften) == 16);
  CHECK(Seen(kWeekends, kOften, kOnce) == 9);
}

TEST_CASE("a week in which nothing was learnt was never seen") {
  CHECK(TuesdayAndWednesday(kWeekends, kEmptySlot, kEmptySlot).first ==
        SlotKnowledge{kUnknownProbability, 0});
}

}  // namespace dozewell
