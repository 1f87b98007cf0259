#include "common/explanation.h"

#include <doctest/doctest.h>

#include <random>

#include "fakes/configurations_fake.h"
#include "support/local_times.h"
#include "support/tracker_data.h"

namespace dozewell {
namespace {

using Tracker = ArbitraryCycleProbabilityTracker;

// A week of 15-minute slots in which Thursday, Friday, Monday, Tuesday and Wednesday were in use
// from 8:00 to 18:00 twice.
TrackerDataPtr OfficeData(fakes::Configurations& configuration) {
  TrackerDataPtr data = NewData(configuration);
  for (int slot = 0; slot < 672; ++slot) {
    const int day = slot / 96;
    const int hour = slot % 96 / 4;
    const int inUse = day != 2 && day != 3 && hour >= 8 && hour < 18 ? 1 : 0;
    data->Slots()[slot] = {-1, -1, inUse, inUse, -1};
  }
  return data;
}

std::string TextAt(fakes::Configurations& configuration, TrackerDataPtr data, const tm& at) {
  Tracker tracker(&configuration, std::move(data));
  return ExplanationText(Explain(tracker, at));
}

constexpr const char* kHeading =
    "    slot                           probability  last     second-last  older\n";

}  // namespace

TEST_CASE("an explanation names the slots behind each prediction") {
  fakes::Configurations configuration;
  CHECK(TextAt(configuration, OfficeData(configuration), WeekTime(1, 17, 50, 1)) ==
        std::string("A suspend at Fri 2026-11-20 17:50\n"
                    "  hibernates the machine after 10 min, at Fri 2026-11-20 18:00,\n"
                    "  wakes it after 2 d 14 h 09 min, at Mon 2026-11-23 08:00, to sleep until it "
                    "is used,\n"
                    "  and hibernates it again when it was not used for 10 h 00 min.\n"
                    "\n"
                    "Next idle stretch: from Fri 2026-11-20 18:00, 10 min after "
                    "Fri 2026-11-20 17:50.\n"
                    "  The next 30 minutes in which every slot is below 30.0 % (StrengthLow):\n") +
            kHeading +
            "    Fri 2026-11-20 18:00 to 18:30  0.0 %        idle     idle         -\n"
            "Next use: from Mon 2026-11-23 08:00, 2 d 14 h 00 min later.\n"
            "  The next slot at or above 70.0 % (StrengthHigh):\n" +
            kHeading +
            "    Mon 2026-11-23 08:00 to 08:15  100.0 %      in use   in use       -\n"
            "Idle stretch after that: from Mon 2026-11-23 18:00, 10 h 00 min after "
            "Mon 2026-11-23 08:00.\n"
            "  The next 30 minutes in which every slot is below 30.0 % (StrengthLow):\n" +
            kHeading +
            "    Mon 2026-11-23 18:00 to 18:30  0.0 %        idle     idle         -\n"
            "Every slot counts alone.\n");
}

TEST_CASE("an explanation shows older observations and which days count together") {
  fakes::Configurations configuration;
  configuration.values["DayGrouping"] = "12";
  TrackerDataPtr data = NewData(configuration);
  for (int slot = 0; slot < 672; ++slot)
    data->Slots()[slot] = {4, slot % 96 == 41 ? 2 : 0, 0, 0, -1};
  const std::string text = TextAt(configuration, std::move(data), WeekTime(2, 10));
  CHECK(text.find(std::string("  The next 30 minutes in which every slot is below 30.0 % "
                              "(StrengthLow):\n") +
                  kHeading +
                  "    Sat 2026-11-21 10:15 to 10:30  12.5 %       idle     idle         "
                  "4 of 8 in use\n"
                  "    Sat 2026-11-21 10:30 to 10:45  0.0 %        idle     idle         "
                  "0 of 8 in use\n"
                  "Next use: no prediction.\n"
                  "  Why: no slot reaches 70.0 % (StrengthHigh); the one that comes nearest is\n" +
                  kHeading +
                  "    Sun 2026-11-22 10:15 to 10:30  12.5 %       idle     idle         "
                  "4 of 8 in use\n"
                  "Days that count together: Thu Fri Mon Tue Wed; Sat Sun.\n") !=
        std::string::npos);
  CHECK(text.find("  hibernates the machine after 15 min, at Sat 2026-11-21 10:15,\n"
                  "  and arms no wake timer.\n") != std::string::npos);
}

TEST_CASE("an explanation shows pooled numbers that make no sense, with why they are so") {
  fakes::Configurations configuration;
  configuration.values["DayGrouping"] = "12";
  TrackerDataPtr data = OfficeData(configuration);
  data->Slots()[2 * 96 + 41] = {1, 0, 0, 0, -1};
  data->Slots()[3 * 96 + 41] = {1, 0, 0, 0, -1};
  data->Slots()[3 * 96 + 42] = {2, 0, 0, 0, -1};
  configuration.values["AgregationWeight"] = "0";
  const std::string text = TextAt(configuration, std::move(data), WeekTime(2, 10));
  CHECK(text.find("    Sat 2026-11-21 10:15 to 10:30  0.0 %        idle     idle         "
                  "0 of 2 in use\n"
                  "    Sat 2026-11-21 10:30 to 10:45  0.0 %        idle     idle         -\n") !=
        std::string::npos);
  CHECK(text.find("    Mon 2026-11-23 08:00 to 08:15  100.0 %      in use   in use       "
                  "-5 / -5 *\n"
                  "    * Every day without older observations takes 1 off both numbers.\n") !=
        std::string::npos);
}

TEST_CASE("an unknown slot is named as the reason for no prediction") {
  fakes::Configurations configuration;
  TrackerDataPtr data = OfficeData(configuration);
  data->Slots()[96 + 18 * 4 + 1] = {-1, -1, -1, -1, -1};
  CHECK(TextAt(configuration, std::move(data), WeekTime(1, 17, 50)) ==
        "A suspend at Fri 2026-11-20 17:50 leaves the user's own timeout in place and arms no "
        "wake timer.\n"
        "\n"
        "Next idle stretch: no prediction.\n"
        "  Why: nothing is known yet about the slot at Fri 2026-11-20 18:15 (unknown: 1 of 672 "
        "slots)\n"
        "Every slot counts alone.\n");
}

TEST_CASE("an unknown slot is named as the reason for no next use") {
  fakes::Configurations configuration;
  TrackerDataPtr data = OfficeData(configuration);
  data->Slots()[2 * 96] = {-1, -1, -1, -1, -1};
  const std::string text = TextAt(configuration, std::move(data), WeekTime(1, 17, 50));
  CHECK(text.find("Next use: no prediction.\n"
                  "  Why: nothing is known yet about the slot at Sat 2026-11-21 00:00 (unknown: "
                  "1 of 672 slots)\n") != std::string::npos);
}

TEST_CASE("a week without idle stretches names the longest and the slot that stands nearest") {
  fakes::Configurations configuration;
  TrackerDataPtr data = OfficeData(configuration);
  for (int slot = 0; slot < 672; ++slot) data->Slots()[slot] = {3, 3, 1, 1, -1};
  data->Slots()[400] = {3, 0, 0, 0, -1};
  data->Slots()[402] = {3, 2, 0, 1, -1};
  CHECK(TextAt(configuration, std::move(data), WeekTime(1, 17, 50)) ==
        std::string("A suspend at Fri 2026-11-20 17:50 leaves the user's own timeout in place and "
                    "arms no wake timer.\n"
                    "\n"
                    "Next idle stretch: no prediction.\n"
                    "  Why: no 30 minutes in a row are below 30.0 % (StrengthLow); the longest "
                    "stretch has 15,\n"
                    "  and the nearest slot above it is\n") +
            kHeading +
            "    Mon 2026-11-23 04:30 to 04:45  66.7 %       in use   idle         "
            "2 of 3 in use\n"
            "Every slot counts alone.\n");
}

TEST_CASE("slots and cycles that cannot give a prediction are named") {
  fakes::Configurations configuration;
  configuration.timeResolution = 45;
  CHECK(TextAt(configuration, NewData(configuration), WeekTime(1))
            .find("  Why: slots of 45 minutes (TimeResolution) are longer than the 30 minutes of "
                  "an idle stretch\n") != std::string::npos);
  configuration.values["DaysInCycle"] = "1";
  configuration.values["MinutesInDay"] = "30";
  configuration.timeResolution = 30;
  CHECK(TextAt(configuration, NewData(configuration), WeekTime(1))
            .find("  Why: the cycle has no other slot than this one\n") != std::string::npos);
}

TEST_CASE("many different slots are cut short") {
  fakes::Configurations configuration;
  configuration.timeResolution = 1;
  TrackerDataPtr data = NewData(configuration);
  for (int slot = 0; slot < 10080; ++slot) data->Slots()[slot] = {100, slot % 30, 0, 0, -1};
  const std::string text = TextAt(configuration, std::move(data), WeekTime(1));
  CHECK(text.find("    Fri 2026-11-20 00:12 to 00:13  3.0 %        idle     idle         "
                  "12 of 100 in use\n"
                  "    and 18 more slots between 0.0 % and 7.2 %\n") != std::string::npos);
}

TEST_CASE("an explanation finds what the predictions say") {
  std::mt19937_64 random(5);
  int found = 0;
  for (int round = 0; round < 300; ++round) {
    fakes::Configurations configuration;
    configuration.timeResolution = round % 2 == 0 ? 15 : 5;
    configuration.values["DayGrouping"] = round % 3 == 0 ? "12" : "0";
    TrackerDataPtr data = NewData(configuration);
    for (int slot = 0; slot < data->slotCount; ++slot) {
      const bool busy = slot / 40 % 3 == 0;
      const auto last = static_cast<int32_t>(random() % 10 == 0 ? !busy : busy);
      const int32_t known = round % 4 == 0 && random() % 300 == 0 ? -1 : last;
      data->Slots()[slot] = {-1, -1, known, known, -1};
    }
    Tracker tracker(&configuration, std::move(data));
    const tm at = WeekTime(0, 0, 0, static_cast<int32_t>(random() % 604800));
    tm now;
    TmFromSeconds(SecondsFromTm(at), now);
    const auto predictions = tracker.GetPredictions(now);
    const Explanation explanation = Explain(tracker, now);
    CHECK((explanation.idle.end == SearchEnd::Found) == (predictions[0].minutes != kNoPrediction));
    CHECK(explanation.use.has_value() == (predictions[0].minutes != kNoPrediction));
    CHECK(explanation.nextIdle.has_value() == (predictions.size() == 2));
    if (explanation.idle.end == SearchEnd::Found) {
      CHECK(explanation.idle.minutes == predictions[0].minutes);
    }
    if (predictions.size() == 2) {
      ++found;
      CHECK(explanation.use->foundAt == predictions[1].time);
      CHECK((explanation.nextIdle->end == SearchEnd::Found
                 ? explanation.nextIdle->minutes
                 : kNoPrediction) == predictions[1].minutes);
    }
  }
  CHECK(found > 50);
}

}  // namespace dozewell
