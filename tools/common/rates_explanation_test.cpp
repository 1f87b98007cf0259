#include "common/rates_explanation.h"

#include <doctest/doctest.h>

#include <memory>
#include <span>
#include <string>
#include <vector>

#include "prediction/time_line.h"
#include "support/sleeps.h"

namespace dozewell {
namespace {

// Rates that were learnt on working days, from a break of 20 minutes at noon and a night each.
std::unique_ptr<RatesState> WorkedFor(int days) {
  auto state = std::make_unique<RatesState>();
  for (int64_t day = 0; day < days; ++day) {
    if (day % 7 > 4) continue;
    const int64_t morning = kEvening - 14 * kHour + day * kDay;  // 08:00, the first on a Monday
    state->Take(Activating, morning);
    state->Take(Suspend, morning + 4 * kHour);
    state->Take(Activating, morning + 4 * kHour + 1200);
    state->Take(Suspend, morning + 10 * kHour);
  }
  return state;
}

std::string TextOf(const RatesState& state, int32_t weight, bool canWake, const tm& at) {
  return RatesExplanationText(ExplainRates(state, WishesOf(state.learnt, weight, canWake), at));
}

const tm kMondayEvening = LocalTime(2026, 1, 26, 18);

}  // namespace

TEST_CASE("an explanation of rates takes the rates apart and says what was seen around them") {
  CHECK(TextOf(*WorkedFor(22), 50, true, kMondayEvening) ==
        "Suspended Mon 18:00, learnt from 31 sleeps.\n"
        "A wait weighs as much as 11.4 hours asleep: asleep pays above 0.09 returns an hour.\n"
        "At Mon 19:03: 0.009 = 0.06 usual x 0.84 time away x 0.18 time of day\n"
        "  x 1.06 weekday x 0.91 both together; seen around here (this class,\n"
        "  20 minutes to each side, days of its kind): 0.0 returns in 9.2 h.\n"
        "At Tue 07:05: 0.15 = 0.06 usual x 0.83 time away x 2.24 time of day\n"
        "  x 1.04 weekday x 1.40 both together; seen around here (this class,\n"
        "  20 minutes to each side, days of its kind): 0.0 returns in 10.9 h.\n"
        "Hibernates Mon 18:03, woken Tue 07:00, again at Tue 15:20.\n");
}

TEST_CASE("an explanation of rates says where no wake is possible, and what a beginner is") {
  CHECK(TextOf(*WorkedFor(1), 50, false, LocalTime(2026, 1, 5, 18)) ==
        "Suspended Mon 18:00, learnt from 1 sleep.\n"
        "A wait weighs as much as 6.1 hours asleep: asleep pays above 0.16 returns an hour.\n"
        "Until three sleeps are learnt it stays asleep for an hour at least.\n"
        "Nothing can wake it, so no wake is planned.\n"
        "At Tue 17:00: 0.15 = 0.15 usual x 1.00 time away x 1.01 time of day\n"
        "  x 1.00 weekday x 1.00 both together; seen around here (this class,\n"
        "  20 minutes to each side, days of its kind): 0.0 returns in 0.0 h.\n"
        "Hibernates Tue 16:00.\n");
}

TEST_CASE("where the weight alone decides, no rate is explained") {
  const auto state = WorkedFor(22);
  CHECK(TextOf(*state, 0, true, kMondayEvening) ==
        "Suspended Mon 18:00, learnt from 31 sleeps.\n"
        "A wait weighs nothing, so it hibernates as soon as it may.\n"
        "Hibernates Mon 18:03.\n");
  CHECK(TextOf(*state, 100, true, kMondayEvening) ==
        "Suspended Mon 18:00, learnt from 31 sleeps.\n"
        "Only waits count, so it never hibernates.\n"
        "Never hibernates.\n");
}

TEST_CASE("of a machine that never hibernates the rate after the suspend is explained") {
  CHECK(TextOf(*WorkedFor(22), 95, true, kMondayEvening) ==
        "Suspended Mon 18:00, learnt from 31 sleeps.\n"
        "A wait weighs as much as 216.5 hours asleep: asleep pays above 0.005 returns an hour.\n"
        "At Mon 18:05: 0.01 = 0.06 usual x 1.07 time away x 0.21 time of day\n"
        "  x 1.06 weekday x 0.97 both together; seen around here (this class,\n"
        "  20 minutes to each side, days of its kind): 0.0 returns in 1.6 h.\n"
        "Never hibernates.\n");
}

TEST_CASE("an explanation of rates for programs has the decision, the weight and each rate") {
  const auto state = WorkedFor(22);
  const Json json =
      RatesExplanationJson(ExplainRates(*state, WishesOf(state->learnt, 50, true), kMondayEvening));
  CHECK(json["at"] == "2026-01-26T18:00:00");
  CHECK(json["predictor"] == "rates");
  CHECK(json["decision"]["sleepRestoredAtTime"] == "2026-01-27T07:00:00");
  CHECK(json["sleeps"] == 31);
  CHECK(json["weight"] == 50);
  CHECK(json["waitHours"].get<double>() == doctest::Approx(11.3947));
  CHECK(json["canWake"] == true);
  REQUIRE(json["rates"].size() == 2);
  CHECK(json["rates"][1]["time"] == "2026-01-27T07:05:00");
  CHECK(json["rates"][1]["hoursSeen"].get<double>() == doctest::Approx(10.8998));
  const Json never = RatesExplanationJson(
      ExplainRates(*state, WishesOf(state->learnt, 100, true), kMondayEvening));
  CHECK(never["waitHours"].is_null());
  CHECK(never["rates"].empty());
}

TEST_CASE("the rate of an explanation is the product of its factors") {
  const auto state = WorkedFor(22);
  const RatesExplanation explanation =
      ExplainRates(*state, WishesOf(state->learnt, 50, true), kMondayEvening);
  REQUIRE(explanation.rates.size() == 2);
  for (const ExplainedRate& rate : explanation.rates) {
    const double product = rate.usual * rate.timeAway * rate.timeOfDay * rate.weekday * rate.both;
    CHECK(rate.perHour == doctest::Approx(product));
  }
  CHECK(explanation.WaitHours() == doctest::Approx(state->learnt.MeanIdleSeconds() / 3600));
}

TEST_CASE("what was seen around counts one class, three clock cells and the days of one kind") {
  auto state = std::make_unique<RatesState>();
  const int64_t noon = kEvening - 10 * kHour;  // Monday
  // Away from noon to 12:10: on Monday and Wednesday, and on Saturday, which is of another kind.
  for (const int64_t day : {0, 2, 5}) {
    state->Take(Suspend, noon + day * kDay);
    state->Take(Activating, noon + day * kDay + 600);
  }
  // It never hibernates, so that the rate is that of five minutes after the suspend.
  const RateWishes wishes = WishesOf(state->learnt, 99, false);
  const auto rateAt = [&](const tm& at) { return ExplainRates(*state, wishes, at).rates.front(); };
  // Five minutes away, 3 to 10 minutes: 7 minutes of each of two days, all but faded.
  const ExplainedRate same = rateAt(LocalTime(2026, 1, 12, 12));
  CHECK(same.returnsSeen == doctest::Approx(2).epsilon(0.05));
  CHECK(same.hoursSeen == doctest::Approx(14.0 / 60).epsilon(0.05));
  CHECK(rateAt(LocalTime(2026, 1, 12, 12, 20)).returnsSeen == same.returnsSeen);
  CHECK(rateAt(LocalTime(2026, 1, 12, 11, 40)).returnsSeen == same.returnsSeen);
  CHECK(rateAt(LocalTime(2026, 1, 12, 12, 40)).returnsSeen == 0);
  CHECK(rateAt(LocalTime(2026, 1, 17, 12)).returnsSeen == doctest::Approx(1).epsilon(0.05));
}

TEST_CASE("rates catch up with the records that are later than all that they have taken") {
  const auto record = [](int64_t time, uint32_t asleep) {
    return HistoryRecord{static_cast<double>(time), asleep, 0};
  };
  const std::vector<HistoryRecord> records = {record(kEvening, 1), record(kEvening + 9 * kHour, 0),
                                              record(kEvening + kDay, 1),
                                              record(kEvening + kDay + 9 * kHour, 0)};
  auto all = std::make_unique<RatesState>();
  CatchUp(*all, records);
  CHECK(all->learnt.sleeps == 2);
  auto later = std::make_unique<RatesState>();
  CatchUp(*later, std::span(records).first(2));
  CatchUp(*later, records);
  CHECK(*later == *all);
}

}  // namespace dozewell
