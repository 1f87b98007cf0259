#include "prediction/rates/rates_predictor.h"

#include <doctest/doctest.h>

#include "fakes/configurations_fake.h"
#include "prediction/tracker.h"
#include "support/sleeps.h"

namespace dozewell {
namespace {

tm TmOf(int64_t seconds) {
  tm time;
  TmFromSeconds(seconds, time);
  return time;
}

// A predictor with its machine, which a timer can wake.
struct Predicting {
  fakes::Configurations configuration;
  HistorianImpl historian;
  bool canWake = true;
  RatesPredictor predictor{&configuration, &historian, [this] { return canWake; }};

  void Tell(int32_t state, int64_t time) { historian.NotifyListener({TmOf(time), state}); }
  // Office hours for some weeks: on from 08:00 to 18:00, and half an hour off at noon.
  void Work(int weeks) {
    for (int day = 0; day < 7 * weeks; ++day) {
      if (day % 7 >= 5) continue;
      const int64_t midnight = kEvening - 22 * kHour + day * kDay;
      Tell(Activating, midnight + 8 * kHour);
      Tell(Suspend, midnight + 12 * kHour);
      Tell(Activating, midnight + 12 * kHour + 1800);
      Tell(Suspend, midnight + 18 * kHour);
    }
  }
  // The minutes of the first record at a time.
  int32_t HibernatesAfter(int64_t time) {
    return predictor.GetPredictions(TmOf(time)).at(0).minutes;
  }
};

// Sets the weight of a strength.
void Weigh(Predicting& predicting, const char* weights, const char* strength) {
  predicting.configuration.values["WR"] = weights;
  predicting.configuration.values["Strength"] = strength;
  predicting.predictor.OnConfigurationChanged("Strength");
}

// Monday after three weeks of work, 18:00.
const int64_t kEndOfWork = kEvening - 4 * kHour + 21 * kDay;

}  // namespace

TEST_CASE("rates predict two records, the second a time to wake before work begins") {
  Predicting predicting;
  predicting.Work(3);
  predicting.Tell(Activating, kEndOfWork - 10 * kHour);
  const auto predictions = predicting.predictor.GetPredictions(TmOf(kEndOfWork));
  REQUIRE(predictions.size() == 2);
  CHECK(predictions[0].time == TmOf(kEndOfWork));
  CHECK(predictions[0].minutes >= 3);
  const int64_t wake = SecondsFromTm(predictions[1].time);
  CHECK(wake > kEndOfWork + 12 * kHour);
  CHECK(wake <= kEndOfWork + 14 * kHour);
  CHECK(wake + predictions[1].minutes * 60 > kEndOfWork + 14 * kHour);

  const auto hibernate = predicting.predictor.PredictHibernate(TmOf(kEndOfWork));
  REQUIRE(hibernate.size() == 1);
  CHECK(hibernate[0].minutes == predictions[0].minutes);
  const auto wakes = predicting.predictor.PredictWake(TmOf(kEndOfWork));
  REQUIRE(wakes.size() == 1);
  CHECK(wakes[0].time == predictions[1].time);
}

TEST_CASE("rates predict one record where the machine cannot be woken") {
  Predicting predicting;
  predicting.Work(3);
  predicting.canWake = false;
  CHECK(predicting.predictor.GetPredictions(TmOf(kEndOfWork)).size() == 1);
  CHECK(predicting.predictor.PredictWake(TmOf(kEndOfWork)).empty());
}

TEST_CASE("rates predict nothing at an invalid time and know no slots") {
  Predicting predicting;
  CHECK(predicting.predictor.GetPredictions(kUnsetTime).empty());
  CHECK(predicting.predictor.PredictHibernate(kUnsetTime).empty());
  CHECK(predicting.predictor.GetSlotProbability(0) == kUnknownProbability);
}

TEST_CASE("the third sleep that was learnt ends the time of a beginner") {
  Predicting predicting;
  predicting.configuration.values["WR"] = "1";
  predicting.configuration.values["Strength"] = "0";
  predicting.predictor.OnConfigurationChanged("Strength");
  for (int day = 0; day < 3; ++day) {
    CHECK(predicting.HibernatesAfter(kEvening + day * kDay) == 60);
    predicting.Tell(Suspend, kEvening + day * kDay);
    predicting.Tell(Activating, kEvening + day * kDay + 9 * kHour);
  }
  CHECK(predicting.HibernatesAfter(kEvening + 3 * kDay) == 3);
}

TEST_CASE("the strength chooses among the scoring weights") {
  Predicting predicting;
  Weigh(predicting, "0, 100", "0");
  CHECK(predicting.HibernatesAfter(kEvening) == 3);
  Weigh(predicting, "0, 100", "1");
  CHECK(predicting.HibernatesAfter(kEvening) == 11520);
}

TEST_CASE("a changed strength counts when the predictor is told of it") {
  Predicting predicting;
  Weigh(predicting, "0, 100", "0");
  predicting.configuration.values["Strength"] = "1";
  CHECK(predicting.HibernatesAfter(kEvening) == 3);
  predicting.configuration.listener->OnConfigurationChanged("Strength");
  CHECK(predicting.HibernatesAfter(kEvening) == 11520);
}

TEST_CASE("a strength without a scoring weight weighs waiting and saving alike") {
  Predicting predicting;
  predicting.Work(3);
  Weigh(predicting, "50", "0");
  const int32_t alike = predicting.HibernatesAfter(kEndOfWork);
  for (const char* const strength : {"", "2", "-1"}) {
    Weigh(predicting, "0 0", strength);
    CHECK(predicting.HibernatesAfter(kEndOfWork) == alike);
  }
  Weigh(predicting, "", "0");
  CHECK(predicting.HibernatesAfter(kEndOfWork) == alike);
}

TEST_CASE("a predictor of rates leaves both of its sources without a listener when it goes") {
  fakes::Configurations configuration;
  HistorianImpl historian;
  {
    const RatesPredictor predictor(&configuration, &historian, [] { return false; });
    CHECK(historian.HasListener());
    CHECK(configuration.listener != nullptr);
  }
  CHECK_FALSE(historian.HasListener());
  CHECK(configuration.listener == nullptr);
}

}  // namespace dozewell
