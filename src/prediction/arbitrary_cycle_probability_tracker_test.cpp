#include "prediction/arbitrary_cycle_probability_tracker.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <random>

#include "base/exception.h"
#include "fakes/configurations_fake.h"
#include "plain_tracker.h"
#include "support/local_times.h"
#include "support/tracker_data.h"

namespace dozewell {
namespace {

using Tracker = ArbitraryCycleProbabilityTracker;

bool Same(const std::vector<PredictionRecord>& a, const std::vector<PredictionRecord>& b) {
  return a.size() == b.size() &&
         std::equal(a.begin(), a.end(), b.begin(), [](const auto& x, const auto& y) {
           return x.time == y.time && x.minutes == y.minutes;
         });
}

// Data with one observation for each slot: in use from 8:00 to 18:00 on `workDays`, and else idle.
TrackerDataPtr OfficeData(fakes::Configurations& configuration, int workDays) {
  TrackerDataPtr data = NewData(configuration);
  for (int day = 0; day < 7; ++day) {
    for (int quarter = 0; quarter < kSlotsPerDay; ++quarter) {
      const bool inUse = (workDays >> day & 1) != 0 && quarter >= 8 * 4 && quarter < 18 * 4;
      data->Slots()[day * kSlotsPerDay + quarter].last = inUse ? 1 : 0;
    }
  }
  return data;
}

constexpr int kWorkDays = 0b1110011;  // Thursday, Friday, Monday, Tuesday, Wednesday

}  // namespace

TEST_CASE("a new tracker has a data block without any observation") {
  fakes::Configurations configuration;
  Tracker tracker(&configuration);
  const TrackerData& data = *tracker.GetData();
  CHECK(data.version == 0);
  CHECK(data.daysInCycle == 7);
  CHECK(data.minutesInDay == 1440);
  CHECK(data.minutesPerSlot == 15);
  CHECK(data.lastState == ContainerStopped);
  CHECK(data.lastTime == tm{0, 0, 0, 0, 0, -1, 0, 0, 0});
  CHECK(data.slotCount == 672);
  CHECK(data.reserved == 0);
  for (int slot = 0; slot < kSlotsPerWeek; ++slot) REQUIRE(data.Slots()[slot] == kEmptySlot);
}

TEST_CASE("a new tracker knows nothing") {
  fakes::Configurations configuration;
  for (const char* grouping : {"0", "12"}) {
    configuration.values["DayGrouping"] = grouping;
    Tracker tracker(&configuration);
    for (int slot = 0; slot < kSlotsPerWeek; ++slot)
      REQUIRE(tracker.GetSlotProbability(slot) == -1.0F);
    const tm now = WeekTime(2, 10);
    CHECK(Same(tracker.PredictHibernate(now), {{now, -1}}));
    CHECK(tracker.PredictWake(now).empty());
    CHECK(Same(tracker.GetPredictions(now), {{now, -1}}));
  }
}

TEST_CASE("slots outside the cycle are unknown") {
  fakes::Configurations configuration;
  Tracker tracker(&configuration, OfficeData(configuration, kWorkDays));
  CHECK(tracker.GetSlotProbability(671) == 0.0F);
  CHECK(tracker.GetSlotProbability(672) == -1.0F);
  CHECK(tracker.GetSlotProbability(-1) == -1.0F);
}

TEST_CASE("configurations without a usable cycle are refused") {
  constexpr const char* kWrong = "ArbitraryCycleProbabilityTracker - wrong configurations";
  constexpr const char* kUneven =
      "Length of day modulus number of minutes within a slot is not zero";
  struct Row {
    const char* daysInCycle;
    const char* minutesInDay;
    uint32_t timeResolution;
    const char* message;
  };
  const Row rows[] = {
      {"0", "1440", 15, kWrong},
      {"7", "0", 15, kWrong},
      {"7", "1440", kNoTimeResolution, kWrong},
      {"7", "1440", 7, kUneven},
      {"7", "", 15, kUneven},  // -1 minutes
      {"7", "1440", 0x7FFFFFFF, kUneven},
      {"", "1440", 15, kWrong},                 // -1 days: no slot
      {"-7", "1440", 15, kWrong},               // the same
      {"7", "1440", 0, kWrong},                 // slots without a length
      {"7", "1440", 0xFFFFFFF1, kWrong},        // slots of -15 minutes
      {"1", "1073741824", 0x40000000, kWrong},  // 0 seconds a slot after wrapping
      {"1", "1073741824", 64, kWrong},          // 0 seconds a cycle after wrapping
      {"2147483647", "1440", 1440, kWrong},     // wraps to -1 slots
      {"100000", "1440", 1, kWrong},            // the size of the data exceeds 32 bits
  };
  for (const Row& row : rows) {
    fakes::Configurations configuration;
    configuration.values["DaysInCycle"] = row.daysInCycle;
    configuration.values["MinutesInDay"] = row.minutesInDay;
    configuration.timeResolution = row.timeResolution;
    CAPTURE(row.daysInCycle);
    CAPTURE(row.minutesInDay);
    CAPTURE(row.timeResolution);
    CHECK_THROWS_WITH_AS(Tracker{&configuration}, row.message, FixedTextException);
  }
}

TEST_CASE("days and minutes that are both missing make a cycle of one slot") {
  fakes::Configurations configuration;
  configuration.values["DaysInCycle"] = "";
  configuration.values["MinutesInDay"] = "";
  configuration.timeResolution = 1;
  Tracker tracker(&configuration);
  CHECK(tracker.GetData()->slotCount == 1);
  tracker.ProcessEvent({WeekTime(0, 8), Activating});
  tracker.ProcessEvent({WeekTime(0, 9), Suspend});
  CHECK(tracker.GetSlotProbability(0) == 1.0F);
  CHECK(Same(tracker.GetPredictions(WeekTime(0, 9)), {{WeekTime(0, 9), -1}}));
  CHECK(tracker.PredictWake(WeekTime(0, 9)).empty());
}

TEST_CASE("a missing weight, or one of -1, is refused before the cycle is looked at") {
  for (const char* key : {"FirstLastWeight", "SecondLastWeight", "AgregationWeight"}) {
    for (const char* value : {"", "-1"}) {
      fakes::Configurations configuration;
      configuration.values[key] = value;
      configuration.values["DaysInCycle"] = "0";
      CHECK_THROWS_WITH_AS(Tracker{&configuration}, "No weigths specified", FixedTextException);
    }
  }
}

TEST_CASE("data of another version or shape is refused") {
  constexpr const char* kWrong = "ArbitraryCycleProbabilityTracker - wrong data file format";
  constexpr const char* kUneven =
      "Length of day modulus number of minutes within a slot is not zero";
  struct Row {
    int32_t TrackerData::*field;
    int32_t value;
    const char* message;
  };
  const Row rows[] = {
      {&TrackerData::daysInCycle, 0, kWrong},     {&TrackerData::minutesInDay, 0, kWrong},
      {&TrackerData::minutesPerSlot, 0, kWrong},  {&TrackerData::minutesPerSlot, 7, kUneven},
      {&TrackerData::minutesPerSlot, -1, kWrong}, {&TrackerData::slotCount, 671, kWrong},
  };
  fakes::Configurations configuration;
  for (const Row& row : rows) {
    TrackerDataPtr data = NewData(configuration);
    data.get()->*row.field = row.value;
    CHECK_THROWS_WITH_AS(Tracker(&configuration, std::move(data)), row.message, FixedTextException);
  }
  TrackerDataPtr data = NewData(configuration);
  data->version = 1;
  CHECK_THROWS_WITH_AS(Tracker(&configuration, std::move(data)), "Version 0 expected",
                       FixedTextException);
}

TEST_CASE("weights 2, 1 and 1 count for a half, a quarter and a quarter") {
  fakes::Configurations configuration;
  TrackerDataPtr data = NewData(configuration);
  data->Slots()[0] = {4, 1, 0, 1, -1};
  data->Slots()[1] = {4, 1, 1, 0, -1};
  data->Slots()[2] = {4, 4, 0, 0, -1};
  data->Slots()[3] = {-1, -1, 0, 1, -1};  // only two observations: 0.5 / 0.75
  data->Slots()[4] = {-1, -1, -1, 1, -1};
  Tracker tracker(&configuration, std::move(data));
  CHECK(tracker.GetSlotProbability(0) == 0.5F + 0.0625F);
  CHECK(tracker.GetSlotProbability(1) == 0.25F + 0.0625F);
  CHECK(tracker.GetSlotProbability(2) == 0.25F);
  CHECK(tracker.GetSlotProbability(3) == 0.5F / 0.75F);
  CHECK(tracker.GetSlotProbability(4) == 1.0F);
}

TEST_CASE("weights that make no sense follow IEEE 754 and two's complement") {
  fakes::Configurations configuration;
  TrackerDataPtr data = NewData(configuration);
  data->Slots()[0] = {4, 1, 0, 1, -1};
  data->Slots()[1] = {0, 3, 1, 1, -1};
  configuration.values["FirstLastWeight"] = "1";
  configuration.values["SecondLastWeight"] = "-3";
  configuration.values["AgregationWeight"] = "2";
  Tracker zeroSum(&configuration, CopyOf(*data));
  CHECK(std::isnan(zeroSum.GetSlotProbability(0)));

  configuration.values["FirstLastWeight"] = "2147483647";
  configuration.values["SecondLastWeight"] = "2147483647";
  configuration.values["AgregationWeight"] = "0";
  Tracker wrapped(&configuration, CopyOf(*data));  // the sum wraps to -2
  CHECK(wrapped.GetSlotProbability(0) == -1073741824.0F);

  configuration.values["FirstLastWeight"] = "2";
  configuration.values["SecondLastWeight"] = "1";
  configuration.values["AgregationWeight"] = "1";
  Tracker noCount(&configuration, CopyOf(*data));
  CHECK(noCount.GetSlotProbability(1) == std::numeric_limits<float>::infinity());
}

TEST_CASE("each slot counts alone with day grouping 0 or 127 and in cycles other than a week") {
  struct Row {
    const char* dayGrouping;
    const char* daysInCycle;
  };
  for (const Row& row : {Row{"0", "7"}, Row{"127", "7"}, Row{"", "7"}, Row{"12", "14"}}) {
    fakes::Configurations configuration;
    configuration.values["DayGrouping"] = row.dayGrouping;
    configuration.values["DaysInCycle"] = row.daysInCycle;
    TrackerDataPtr data = NewData(configuration);
    data->Slots()[Slot(2, 10)].last = 1;
    Tracker tracker(&configuration, std::move(data));
    for (int day = 0; day < 7; ++day) {
      CAPTURE(row.dayGrouping);
      CHECK(tracker.GetSlotProbability(Slot(day, 10)) == (day == 2 ? 1.0F : -1.0F));
    }
  }
}

TEST_CASE("day grouping 12 pools the weekend and the other five days") {
  fakes::Configurations configuration;
  configuration.values["DayGrouping"] = "12";
  TrackerDataPtr data = NewData(configuration);
  data->Slots()[Slot(2, 10)].last = 1;
  data->Slots()[Slot(4, 20)].last = 0;
  Tracker tracker(&configuration, std::move(data));
  for (int day = 0; day < 7; ++day) {
    const bool weekend = day == 2 || day == 3;
    CHECK(tracker.GetSlotProbability(Slot(day, 10)) == (weekend ? 1.0F : -1.0F));
    // On the observed day itself five missing sums over five missing counts give 1.
    const float workDay = day == 4 ? 0.25F : 0.0F;
    CHECK(tracker.GetSlotProbability(Slot(day, 20)) == (weekend ? -1.0F : workDay));
  }
}

TEST_CASE("day grouping 255 is not 127 and pools all seven days") {
  fakes::Configurations configuration;
  configuration.values["DayGrouping"] = "255";
  TrackerDataPtr data = NewData(configuration);
  data->Slots()[Slot(2, 10)].last = 1;
  Tracker tracker(&configuration, std::move(data));
  for (int day = 0; day < 7; ++day) CHECK(tracker.GetSlotProbability(Slot(day, 10)) == 1.0F);
}

TEST_CASE("pooled observations are those of the nearest days before, missing sums count as -1") {
  fakes::Configurations configuration;
  configuration.values["DayGrouping"] = "12";
  TrackerDataPtr data = NewData(configuration);
  // Thursday, Friday, Monday, Tuesday and Wednesday at 10:00.
  data->Slots()[Slot(0, 10)] = {3, 2, 1, 1, -1};
  data->Slots()[Slot(1, 10)] = {-1, -1, -1, -1, -1};
  data->Slots()[Slot(4, 10)] = {-1, -1, 0, 0, -1};
  data->Slots()[Slot(5, 10)] = {5, 1, 0, 1, -1};
  data->Slots()[Slot(6, 10)] = {-1, -1, -1, 0, -1};
  Tracker tracker(&configuration, std::move(data));
  CHECK(tracker.SlotObservations(Slot(0, 10)) == Observations{5, 0, 1, 0});
  CHECK(tracker.SlotObservations(Slot(1, 10)) == Observations{5, 0, 0, 1});
  CHECK(tracker.SlotObservations(Slot(4, 10)) == Observations{5, 0, 0, 1});
  CHECK(tracker.SlotObservations(Slot(5, 10)) == Observations{5, 0, 1, 0});
  CHECK(tracker.SlotObservations(Slot(6, 10)) == Observations{5, 0, 0, 1});
  CHECK(tracker.SlotObservations(Slot(2, 10)) == Observations{-1, -1, -1, -1});
  CHECK(tracker.GetSlotProbability(Slot(0, 10)) == 0.25F);
  CHECK(tracker.GetSlotProbability(Slot(1, 10)) == 0.5F);
}

TEST_CASE("when the group has no second-last observation, the slot's own last one stands in") {
  fakes::Configurations configuration;
  configuration.values["DayGrouping"] = "12";
  TrackerDataPtr data = NewData(configuration);
  data->Slots()[Slot(2, 10)] = {-1, -1, -1, 1, -1};
  Tracker tracker(&configuration, std::move(data));
  CHECK(tracker.SlotObservations(Slot(2, 10)) == Observations{-2, -2, 1, 1});
  CHECK(tracker.SlotObservations(Slot(3, 10)) == Observations{-2, -2, -1, 1});
}

TEST_CASE("StrengthHigh 70 is 0.7 and a missing StrengthLow keeps the earlier value") {
  fakes::Configurations configuration;
  Tracker tracker(&configuration);
  CHECK(tracker.StrengthHigh() == 0.7F);
  CHECK(tracker.StrengthLow() == 0.3F);
  configuration.values["StrengthHigh"] = "80";
  configuration.values["StrengthLow"] = "";
  tracker.ReloadParameters("Strength");
  CHECK(tracker.StrengthHigh() == 0.8F);
  CHECK(tracker.StrengthLow() == 0.3F);
  configuration.values["StrengthHigh"] = "";
  configuration.values["StrengthLow"] = "10";
  tracker.ReloadParameters("Strength");
  CHECK(tracker.StrengthHigh() == 0.8F);
  CHECK(tracker.StrengthLow() == 0.3F);
}

TEST_CASE("thresholds that were never configured are 0") {
  fakes::Configurations configuration;
  configuration.values["StrengthHigh"] = "";
  Tracker tracker(&configuration);
  CHECK(tracker.StrengthHigh() == 0.0F);
  CHECK(tracker.StrengthLow() == 0.0F);
}

TEST_CASE("reloaded parameters count at once, and the learnt data is kept") {
  fakes::Configurations configuration;
  TrackerDataPtr data = OfficeData(configuration, kWorkDays);
  data->Slots()[0] = {4, 1, 0, 1, -1};
  Tracker tracker(&configuration, CopyOf(*data));
  CHECK(Same(tracker.PredictWake(WeekTime(0, 2)), {{WeekTime(0, 8), 600}}));
  configuration.values["StrengthHigh"] = "0";
  configuration.values["FirstLastWeight"] = "0";
  configuration.values["SecondLastWeight"] = "0";
  tracker.ReloadParameters("Strength");
  CHECK(tracker.GetSlotProbability(0) == 0.25F);
  CHECK(Same(tracker.PredictWake(WeekTime(0, 2)), {{WeekTime(0, 2, 15), 15}}));
  CHECK(SameBytes(*tracker.GetData(), *data));
}

TEST_CASE("new thresholds count even when the weights are missing") {
  fakes::Configurations configuration;
  Tracker tracker(&configuration, OfficeData(configuration, kWorkDays));
  configuration.values["StrengthHigh"] = "0";
  configuration.values["AgregationWeight"] = "";
  CHECK_THROWS_WITH_AS(tracker.ReloadParameters("Strength"), "No weigths specified",
                       FixedTextException);
  CHECK(Same(tracker.PredictWake(WeekTime(0, 2)), {{WeekTime(0, 2, 15), 15}}));
}

TEST_CASE("predictions name the next idle stretch, the next use and the idle stretch after it") {
  fakes::Configurations configuration;
  Tracker tracker(&configuration, OfficeData(configuration, kWorkDays));
  // Friday 17:50:01: idle from 18:00, in use on Monday from 8:00 to 18:00.
  const tm now = WeekTime(1, 17, 50, 1);
  CHECK(Same(tracker.GetPredictions(now), {{now, 10}, {WeekTime(4, 8), 600}}));
  CHECK(Same(tracker.PredictHibernate(now), {{now, 10}}));
  // The current slot itself is not looked at, and seconds round up to whole minutes.
  const tm morning = WeekTime(1, 8);
  CHECK(Same(tracker.GetPredictions(morning), {{morning, 600}, {WeekTime(4, 8), 600}}));
  const tm night = WeekTime(1, 2, 0, 1);
  CHECK(Same(tracker.GetPredictions(night), {{night, 15}, {WeekTime(1, 8), 600}}));
  // The caller's tm_isdst is returned.
  tm summer = night;
  summer.tm_isdst = 1;
  CHECK(tracker.PredictHibernate(summer)[0].time == summer);
}

TEST_CASE("an unknown slot ends the search for idleness and for use") {
  fakes::Configurations configuration;
  TrackerDataPtr data = OfficeData(configuration, kWorkDays);
  data->Slots()[Slot(1, 18, 15)].last = -1;
  Tracker tracker(&configuration, CopyOf(*data));
  const tm now = WeekTime(1, 17, 50);
  CHECK(Same(tracker.GetPredictions(now), {{now, -1}}));

  data->Slots()[Slot(1, 18, 15)].last = 0;
  data->Slots()[Slot(1, 18, 30)].last = -1;
  Tracker later(&configuration, CopyOf(*data));
  CHECK(Same(later.GetPredictions(now), {{now, 10}}));
  CHECK(later.PredictWake(now).empty());
}

TEST_CASE("weights that make a probability of -1 make the slot unknown") {
  fakes::Configurations configuration;
  configuration.values["FirstLastWeight"] = "-2";
  configuration.values["SecondLastWeight"] = "2";
  configuration.values["AgregationWeight"] = "2";
  TrackerDataPtr data = OfficeData(configuration, kWorkDays);
  data->Slots()[Slot(1, 18, 15)] = {1, 0, 0, 1, -1};
  Tracker tracker(&configuration, std::move(data));
  CHECK(tracker.GetSlotProbability(Slot(1, 18, 15)) == -1.0F);
  const tm now = WeekTime(1, 17, 50);
  CHECK(Same(tracker.GetPredictions(now), {{now, -1}}));
}

TEST_CASE("no idle stretch is found in a cycle that is always in use, no use in an idle one") {
  fakes::Configurations configuration;
  TrackerDataPtr data = NewData(configuration);
  for (int slot = 0; slot < kSlotsPerWeek; ++slot) data->Slots()[slot].last = 1;
  const tm now = WeekTime(3, 12);
  CHECK(Same(Tracker(&configuration, CopyOf(*data)).GetPredictions(now), {{now, -1}}));
  for (int slot = 0; slot < kSlotsPerWeek; ++slot) data->Slots()[slot].last = 0;
  CHECK(Same(Tracker(&configuration, CopyOf(*data)).GetPredictions(now), {{now, 15}}));
}

TEST_CASE("slots longer than 30 minutes never make an idle stretch") {
  fakes::Configurations configuration;
  configuration.timeResolution = 45;
  TrackerDataPtr data = NewData(configuration);
  for (int slot = 0; slot < 224; ++slot) data->Slots()[slot].last = 0;
  Tracker tracker(&configuration, std::move(data));
  const tm now = WeekTime(3, 12);
  CHECK(Same(tracker.GetPredictions(now), {{now, -1}}));
}

TEST_CASE("a time that does not convert gets an answer too") {
  fakes::Configurations configuration;
  Tracker tracker(&configuration, OfficeData(configuration, kWorkDays));
  const tm none = {-1, -1, -1, -1, -1, -1, -1, -1, -1};
  // It counts from -1 seconds, which is one second before slot 0.
  CHECK(Same(tracker.PredictHibernate(none), {{none, 16}}));
  // The next use after the last second that converts has no broken-down time.
  const tm last = LocalTime(3000, 12, 31, 23, 59, 59);
  CHECK(tracker.PredictWake(last)[0].time == none);
}

TEST_CASE("cycles whose products wrap stay within their slots") {
  struct Row {
    const char* daysInCycle;
    const char* minutesInDay;
    uint32_t timeResolution;
    int32_t slotCount;
  };
  for (const Row& row : {Row{"30000", "1440", 30, 1440000}, Row{"1", "2147483670", 71582789, 29},
                         Row{"7", "-1000000000", 1000000, 1589}, Row{"-7", "-1440", 10, 1008}}) {
    fakes::Configurations configuration;
    configuration.values["DaysInCycle"] = row.daysInCycle;
    configuration.values["MinutesInDay"] = row.minutesInDay;
    configuration.values["DayGrouping"] = "12";
    configuration.timeResolution = row.timeResolution;
    CAPTURE(row.minutesInDay);
    if (row.slotCount == 29) {  // saturates, and is then no whole number of slots
      CHECK_THROWS_AS(Tracker{&configuration}, FixedTextException);
      continue;
    }
    Tracker tracker(&configuration);
    CHECK(tracker.GetData()->slotCount == row.slotCount);
    for (int year = 1970; year <= 3000; year += 103) {
      tracker.ProcessEvent({LocalTime(year, 3, 1), Activating});
      tracker.ProcessEvent({LocalTime(year, 9, 1), Suspend});
      tracker.GetPredictions(LocalTime(year, 9, 1));
    }
  }
}

TEST_CASE("every answer equals that of a plain reading of the rules to the last bit") {
  std::mt19937_64 random(20261121);
  const auto below = [&random](uint64_t limit) { return static_cast<int32_t>(random() % limit); };
  const uint32_t resolutions[] = {1, 5, 7, 10, 15, 30, 45, 60, 90};
  const char* const groupings[] = {"0", "12", "96", "127", "255", "1", "-1", "85"};
  const char* const cycles[] = {"7", "7", "7", "1", "14", "3"};
  for (int round = 0; round < 120; ++round) {
    fakes::Configurations configuration;
    configuration.timeResolution = resolutions[below(std::size(resolutions))];
    configuration.values["MinutesInDay"] = configuration.timeResolution == 7 ? "1435" : "1440";
    configuration.values["DayGrouping"] = groupings[below(std::size(groupings))];
    configuration.values["DaysInCycle"] = cycles[below(std::size(cycles))];
    for (const char* key : {"FirstLastWeight", "SecondLastWeight", "AgregationWeight"}) {
      configuration.values[key] = std::to_string(below(8) == 0 ? -below(50) - 2 : below(60));
    }
    configuration.values["StrengthHigh"] = std::to_string(below(101));
    configuration.values["StrengthLow"] = std::to_string(below(101));

    Tracker start(&configuration);
    TrackerDataPtr data = CopyOf(*start.GetData());
    if (round % 3 == 0) {  // numbers that no tracker would have learnt
      constexpr int32_t kOdd[] = {-1, -1, -1, 0, 0, 1, 1, 2, -7, 1000000};
      for (int i = 0; i < data->slotCount; ++i) {
        data->Slots()[i] = {kOdd[below(10)], kOdd[below(10)], kOdd[below(10)], kOdd[below(10)],
                            int64_t{below(2)} - 1};
      }
    }
    PlainTracker plain(configuration, *data);
    Tracker tracker(&configuration, std::move(data));
    if (round % 2 == 0) tracker.EstimateWhenAsked();

    int64_t now = 1700000000 + below(100000000);
    const int events = 40 + below(200);
    for (int i = 0; i < events; ++i) {
      const int64_t stretch = int64_t{1} << below(22);
      now += 1 + below(static_cast<uint64_t>(stretch));
      TimeLineEvent event;
      TmFromSeconds(now, event.time);
      event.state = below(8) == 0 ? below(4) : i % 2;
      tracker.ProcessEvent(event);
      plain.ProcessEvent(event);
      if (i % 8 != 0) continue;
      tm at;
      TmFromSeconds(now + below(604800), at);
      REQUIRE(Same(tracker.GetPredictions(at), plain.GetPredictions(at)));
      REQUIRE(Same(tracker.PredictHibernate(at), plain.PredictHibernate(at)));
      REQUIRE(Same(tracker.PredictWake(at), plain.PredictWake(at)));
    }
    REQUIRE(SameBytes(*tracker.GetData(), *plain.GetData()));
    for (int slot = 0; slot < tracker.GetData()->slotCount; ++slot) {
      const float probability = tracker.GetSlotProbability(slot);
      const float expected = plain.GetSlotProbability(slot);
      const bool bothNan = std::isnan(probability) && std::isnan(expected);
      REQUIRE(
          (bothNan || std::bit_cast<uint32_t>(probability) == std::bit_cast<uint32_t>(expected)));
    }
  }
}

}  // namespace dozewell
