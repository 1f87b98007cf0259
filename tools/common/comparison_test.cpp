#include "common/comparison.h"

#include <doctest/doctest.h>

#include "optimizer/simulator/simulator.h"
#include "support/mornings.h"
#include "support/sleeps.h"

namespace dozewell {
namespace {

constexpr int kDays = 10;

fakes::Configurations WithRanges() {
  fakes::Configurations configuration = AllDaysAlike();
  configuration.values["StrengthHighRange"] = "60";
  configuration.values["StrengthLowRange"] = "40";
  configuration.values["FirstLastWeightRange"] = "50";
  configuration.values["SecondLastWeightRange"] = "20 30";
  configuration.values["DayGroupingRange"] = "255";
  configuration.values["WR"] = "90";
  return configuration;
}

Outcomes Fixed(int64_t seconds) {
  Outcomes outcomes;
  CountOutcomes(SimulateFixedTimeout(Mornings(kDays), seconds), outcomes);
  return outcomes;
}

Outcomes Predicted(IConfigurations& configuration, const char* low) {
  NativeSimulatorConfigurations parameters(
      kSimulatedDataPath, "7", configuration.GetValue(kPredictorSection, "FirstLastWeight"),
      configuration.GetValue(kPredictorSection, "SecondLastWeight"),
      configuration.GetValue(kPredictorSection, "AgregationWeight"), "70", low, "255");
  Outcomes outcomes;
  CountOutcomes(SimulatePredictor(parameters, Mornings(kDays)), outcomes);
  return outcomes;
}

}  // namespace

TEST_CASE("a comparison has the outcomes of each choice") {
  fakes::Configurations configuration = WithRanges();
  const Comparison comparison = Compare(Mornings(kDays), configuration, 2 * kHour);
  CHECK(comparison.fixed == std::vector<Choice>{{"10 minutes", "", Fixed(600), 10},
                                                {"30 minutes", "", Fixed(1800), 30},
                                                {"60 minutes", "", Fixed(kHour), 60},
                                                {"180 minutes", "", Fixed(3 * kHour), 180},
                                                {"never", "", Fixed(0), 0}});
  // Nine nights of 20 hours.
  CHECK(comparison.fixed[2].outcomes == Outcomes{9 * kHour, 9 * 19 * kHour, 0, 9});
  CHECK(comparison.fixed[4].outcomes == Outcomes{9 * 20 * kHour, 0, 9, 0});
  CHECK(comparison.settings == Choice{"settings", "", Predicted(configuration, "30")});
  CHECK(comparison.baseline == Outcomes{9 * 2 * kHour, 9 * 18 * kHour, 0, 9});
  CHECK(comparison.sets == 2);
  // Asleep from 12:05 to 12:10 and from 08:00 to 08:05.
  CHECK(comparison.clairvoyant ==
        Choice{"clairvoyant", "", {9 * 600, 9 * (20 * kHour - 600), 9, 0}});
}

TEST_CASE("an adopted set is simulated as the service will run it") {
  fakes::Configurations configuration = WithRanges();
  const Comparison comparison = Compare(Mornings(kDays), configuration, 2 * kHour);
  REQUIRE(comparison.best.size() == 1);
  CHECK(comparison.best[0].value == "50,30,20,60,40,255");
  CHECK(SetOf(comparison.best[0]) == ParameterSet{{60, 40}, {50, 30, 20}, 255});
  REQUIRE(comparison.adopted.size() == 1);
  CHECK(comparison.adopted[0].name == "Best0");
  CHECK(comparison.adopted[0].value == "50,30,20,60,40,255");
  CHECK(comparison.adopted[0].outcomes.resumesFromSleep > 0);
}

TEST_CASE("where no set is good enough, the timeout stays") {
  fakes::Configurations configuration = WithRanges();
  // Where only power counts, ten minutes of sleep a night cannot be beaten.
  configuration.values["WR"] = "0";
  const Comparison comparison = Compare(Mornings(kDays), configuration, 60);
  CHECK(comparison.adopted == std::vector<Choice>{{"Best0", "-1", comparison.baseline}});
  CHECK(SetOf(comparison.best[0]) == std::nullopt);
}

TEST_CASE("a result without parameters changes nothing") {
  fakes::Configurations configuration = WithRanges();
  configuration.values["StrengthHighRange"] = "";
  // A timeout that scores nothing either: every resume is from hibernation, and only sleep counts.
  configuration.values["WR"] = "100";
  const Comparison comparison = Compare(Mornings(kDays), configuration, 60);
  CHECK(comparison.sets == 0);
  CHECK(comparison.adopted ==
        std::vector<Choice>{{"Best0", ",,,,,", comparison.settings.outcomes}});
  CHECK(SetOf(comparison.best[0]) == std::nullopt);
}

TEST_CASE("without weights nothing is adopted") {
  fakes::Configurations configuration = WithRanges();
  configuration.values.erase("WR");
  CHECK(Compare(Mornings(kDays), configuration, 600).adopted.empty());
}

}  // namespace dozewell
