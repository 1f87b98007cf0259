#include "walk/walk_forward.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <set>

#include "base/exception.h"
#include "common/clairvoyant.h"
#include "common/sample_history.h"
#include "common/simulated_rates.h"
#include "optimizer/simulator/simulator.h"
#include "support/mornings.h"

namespace dozewell {
namespace {

constexpr int64_t kSecondsOfHour = 3600;
constexpr int kWalkedMornings = 10;  // with nine sleeps of 20 hours
constexpr SearchHabits kEveryOtherDay = {.intervalDays = 1, .delayMinutes = 30};

// Predicts nothing until a search has found its one set.
fakes::Configurations WithRanges(const char* weights) {
  fakes::Configurations configuration = AllDaysAlike();
  configuration.values["StrengthLow"] = "0";
  configuration.values["StrengthHighRange"] = "60";
  configuration.values["StrengthLowRange"] = "40";
  configuration.values["FirstLastWeightRange"] = "50";
  configuration.values["SecondLastWeightRange"] = "30";
  configuration.values["DayGroupingRange"] = "255";
  configuration.values["WR"] = weights;
  return configuration;
}

Walk WalkMornings(fakes::Configurations configuration,
                  int64_t userTimeoutSeconds = 2 * kSecondsOfHour,
                  const SearchHabits& habits = kEveryOtherDay) {
  return WalkForward(Mornings(kWalkedMornings), configuration, userTimeoutSeconds, habits);
}

// The outcomes of sleeps that hibernate after a time, and of sleeps that are predicted: asleep for
// the five minutes before a slot begins, and for five after one began.
Outcomes Unpredicted(int32_t sleeps, int64_t timeoutSeconds) {
  return {sleeps * timeoutSeconds, sleeps * (20 * kSecondsOfHour - timeoutSeconds), 0, sleeps};
}
Outcomes Predicted(int32_t sleeps) {
  return {sleeps * 600, sleeps * (20 * kSecondsOfHour - 600), sleeps, 0};
}
Outcomes PredictedWithoutWake(int32_t sleeps) {
  return {sleeps * 300, sleeps * (20 * kSecondsOfHour - 300), 0, sleeps};
}
Outcomes Sum(Outcomes a, const Outcomes& b) { return a += b; }

Outcomes OutcomesOfTimeLine(const SimTimeLine& timeLine) {
  Outcomes outcomes;
  CountOutcomes(timeLine, outcomes);
  return outcomes;
}

}  // namespace

TEST_CASE("where the settings predict nothing, the user's own timeout holds") {
  // Nothing is known at the first sleep.
  const Walk walk = WalkMornings(AllDaysAlike());
  CHECK(walk.Of(WalkedKind::Settings, 0).outcomes ==
        Sum(Unpredicted(1, 2 * kSecondsOfHour), Predicted(8)));
  CHECK(walk.sleeps == 9);
}

TEST_CASE("what a search found is in force from the next sleep on") {
  const Walk walk = WalkMornings(WithRanges("90"));
  // The first resume starts the clock, the second comes a day later, the third more than a day.
  REQUIRE(walk.searches.size() == 4);
  CHECK(walk.searches[0] == SearchRun{SimTime(3, 8, 5), false});
  CHECK(walk.searches[1] == SearchRun{SimTime(5, 8, 5), false});
  CHECK(walk.Of(WalkedKind::Service, 0).outcomes ==
        Sum(Unpredicted(3, 2 * kSecondsOfHour), Predicted(6)));
  CHECK(walk.Of(WalkedKind::ServiceWithoutWake, 0).outcomes ==
        Sum(Unpredicted(3, 2 * kSecondsOfHour), PredictedWithoutWake(6)));
  CHECK(walk.Of(WalkedKind::Settings, 0).outcomes == Unpredicted(9, 2 * kSecondsOfHour));
}

TEST_CASE("a search that a suspend cuts short changes nothing") {
  const Walk walk = WalkMornings(WithRanges("90"), 2 * kSecondsOfHour,
                                 {.intervalDays = 1, .delayMinutes = 4 * 60});
  CHECK(walk.searches == std::vector<SearchRun>{{SimTime(3, 8, 5), true},
                                                {SimTime(5, 8, 5), true},
                                                {SimTime(7, 8, 5), true},
                                                {SimTime(9, 8, 5), true}});
  CHECK(walk.Of(WalkedKind::Service, 0).outcomes == Unpredicted(9, 2 * kSecondsOfHour));
}

TEST_CASE("where a search found nothing better, the user's own timeout holds from then on") {
  fakes::Configurations configuration = WithRanges("0 90");
  configuration.values["StrengthLow"] = "30";
  // Where only power counts, a minute of sleep a night cannot be beaten.
  const Walk walk = WalkMornings(configuration, 60);
  CHECK(walk.Of(WalkedKind::Service, 0).outcomes == Sum(Unpredicted(1 + 6, 60), Predicted(2)));
  CHECK(walk.Of(WalkedKind::Service, 1).outcomes == Sum(Unpredicted(1, 60), Predicted(8)));
}

TEST_CASE("each strength begins with the set that is stored for it") {
  fakes::Configurations configuration = WithRanges("50 50 50");
  configuration.values["StrengthHighRange"] = "";
  configuration.values["Best0"] = "50,30,20,60,40,255";
  configuration.values["Best1"] = "-1";
  const Walk walk = WalkMornings(configuration, 0, {.intervalDays = 100});
  CHECK(walk.searches.empty());
  CHECK(walk.Of(WalkedKind::Service, 0).outcomes ==
        Sum({20 * kSecondsOfHour, 0, 1, 0}, Predicted(8)));
  const Outcomes asleepThroughout = {9 * 20 * kSecondsOfHour, 0, 9, 0};
  CHECK(walk.Of(WalkedKind::Service, 1).outcomes == asleepThroughout);
  CHECK(walk.Of(WalkedKind::Service, 2).outcomes == asleepThroughout);
}

TEST_CASE("a text that is no set brings predictions back, and leaves the parameters") {
  fakes::Configurations configuration = WithRanges("0");
  configuration.values["StrengthLow"] = "30";
  configuration.values["StrengthHighRange"] = "";  // no set at all, so the text is ",,,,,"
  configuration.values["Best0"] = "-1";
  const Walk walk = WalkMornings(configuration, 0);
  CHECK(walk.Of(WalkedKind::Service, 0).outcomes ==
        Sum({3 * 20 * kSecondsOfHour, 0, 3, 0}, Predicted(6)));
}

TEST_CASE("fixed timeouts and the clairvoyant are as in a simulation") {
  const Walk walk = WalkMornings(AllDaysAlike(), 37 * 60);
  const auto history = Mornings(kWalkedMornings);
  for (const int64_t minutes : {0, 1, 10, 37, 180, 720}) {
    CAPTURE(minutes);
    CHECK(walk.Timeout(minutes).outcomes ==
          OutcomesOfTimeLine(SimulateFixedTimeout(history, minutes * 60)));
  }
  CHECK(walk.Timeout(0).name == "never");
  CHECK(walk.Timeout(1).name == "1 minute");
  CHECK(walk.Timeout(37).name == "37 minutes");
  CHECK(walk.Of(WalkedKind::Clairvoyant, 0).outcomes ==
        OutcomesOfTimeLine(SimulateClairvoyant(history)));
}

TEST_CASE("the best timeout is known afterwards, and before that the past chooses") {
  const Walk walk = WalkMornings(WithRanges("90 0"));
  CHECK(walk.Of(WalkedKind::BestFixed, 0).hibernateAfterMinutes == 0);
  CHECK(walk.Of(WalkedKind::BestFixed, 0).outcomes == walk.Timeout(0).outcomes);
  CHECK(walk.Of(WalkedKind::BestFixed, 1).hibernateAfterMinutes == 1);
  // The first sleep has no past.
  CHECK(walk.Of(WalkedKind::PastFixed, 0).outcomes ==
        Sum(Unpredicted(1, 2 * kSecondsOfHour), {8 * 20 * kSecondsOfHour, 0, 8, 0}));
  CHECK(walk.Of(WalkedKind::PastFixed, 1).outcomes ==
        Sum(Unpredicted(1, 2 * kSecondsOfHour), Unpredicted(8, 60)));
}

TEST_CASE("among equal timeouts the user's own stays") {
  // Every timeout below 20 hours waits each time, and all the time counts for nothing.
  const Walk walk = WalkMornings(WithRanges("100"), 45 * 60);
  CHECK(walk.Of(WalkedKind::BestFixed, 0).hibernateAfterMinutes == 0);
  fakes::Configurations configuration = WithRanges("100");
  const std::vector<HistoryRecord> awake = {{100, 0, 0}, {200, 1, 0}, {230, 0, 0}, {300, 1, 0}};
  CHECK(WalkForward(awake, configuration, 45 * 60, {})
            .Of(WalkedKind::BestFixed, 0)
            .hibernateAfterMinutes == 45);
}

TEST_CASE("rates decide as in a simulation at each strength") {
  const auto history = MakeSampleHistory(*FindSampleKind("home"), 60, 3);
  fakes::Configurations configuration = WithRanges("30 70");
  const Walk walk = WalkForward(history, configuration, 600, {});
  for (size_t strength = 0; strength < 2; ++strength) {
    CAPTURE(strength);
    configuration.values["Strength"] = std::to_string(strength);
    CHECK(walk.Of(WalkedKind::Rates, strength).outcomes ==
          OutcomesOfTimeLine(SimulateRates(configuration, history, true)));
    CHECK(walk.Of(WalkedKind::RatesWithoutWake, strength).outcomes ==
          OutcomesOfTimeLine(SimulateRates(configuration, history, false)));
  }
}

TEST_CASE("choices have names of their own, and their weeks add up") {
  fakes::Configurations configuration = WithRanges("30 70");
  const Walk walk =
      WalkForward(MakeSampleHistory(*FindSampleKind("office"), 30, 1), configuration, 600, {});
  std::set<std::string> names;
  for (const WalkedChoice& choice : walk.choices) {
    CAPTURE(choice.name);
    CHECK(names.insert(choice.name).second);
    REQUIRE(choice.weeks.size() == walk.weeks);
    Outcomes sum;
    for (const Outcomes& week : choice.weeks) sum += week;
    CHECK(sum == choice.outcomes);
    CHECK(sum.resumesFromSleep + sum.resumesFromHibernate == static_cast<int32_t>(walk.sleeps));
  }
  CHECK(walk.choices.size() == 16 + 6 * 2 + 2);
  CHECK(names.contains("timeout of the past, strength 1"));
  CHECK(names.contains("service without wake, strength 0"));
  CHECK(walk.weeks == 5);
}

TEST_CASE(
    "weeks begin at the midnight before the first suspend, and those without one are left out") {
  fakes::Configurations configuration = AllDaysAlike();
  const std::vector<HistoryRecord> history = {
      SimRecord(0, 0, 8),     SimRecord(1, 0, 9),  SimRecord(0, 7, 0),  SimRecord(1, 7, 0, 1),
      SimRecord(0, 21, 0, 0), SimRecord(1, 22, 0), SimRecord(0, 22, 1), SimRecord(1, 22, 2)};
  const Walk walk = WalkForward(history, configuration, 0, {});
  CHECK(walk.weeks == 3);
  CHECK(walk.Timeout(0).weeks == std::vector<Outcomes>{{SimTime(7, 0) - SimTime(0, 9), 0, 1, 0},
                                                       {SimTime(21, 0) - SimTime(7, 0, 1), 0, 1, 0},
                                                       {kSecondsOfHour, 0, 1, 0}});
}

TEST_CASE("a sleep from a time before all calendars has the user's own timeout") {
  fakes::Configurations configuration = WithRanges("50");
  const std::vector<HistoryRecord> history = {{-1000, 1, 0}, {1000, 0, 0}, {2000, 0, 0}};
  const Walk walk = WalkForward(history, configuration, 600, {});
  for (const WalkedKind kind : {WalkedKind::Settings, WalkedKind::Service, WalkedKind::Rates}) {
    CHECK(walk.Of(kind, 0).outcomes == Outcomes{600, 1400, 0, 1});
  }
  const std::vector<HistoryRecord> longest = {{-1e300, 1, 0}, {1000, 0, 0}, {2000, 0, 0}};
  CHECK(WalkForward(longest, configuration, 600, {}).sleeps == 1);
}

TEST_CASE("a history without sleeps is walked too") {
  fakes::Configurations configuration = WithRanges("50");
  const Walk walk = WalkForward({}, configuration, 600, {});
  CHECK(walk.sleeps == 0);
  CHECK(walk.weeks == 0);
  CHECK(walk.Of(WalkedKind::Service, 0).outcomes == Outcomes{});
}

TEST_CASE("parameters that cannot be simulated cannot be walked with") {
  fakes::Configurations configuration = WithRanges("50");
  configuration.values.erase("FirstLastWeight");
  CHECK_THROWS_AS(WalkForward(Mornings(kWalkedMornings), configuration, 600, {}),
                  FixedTextException);
}

}  // namespace dozewell
