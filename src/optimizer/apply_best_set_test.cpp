#include "optimizer/apply_best_set.h"

#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "fakes/event_log_fake.h"
#include "fakes/settings_fake.h"
#include "prediction/configurations.h"

namespace dozewell {
namespace {

using fakes::settings;

void Prepare(const std::string& strength, const std::string& best, const std::string& text) {
  fakes::ResetSettings();
  fakes::eventLog = {};
  auto& values = settings.current.predictorValues;
  values[{kPredictorSection, "Strength"}] = fakes::Text(strength);
  values[{kPredictorSection, best}] = fakes::Text(text);
}

// The calls that wrote something.
std::vector<std::string> Writes() {
  std::vector<std::string> writes;
  for (const std::string& call : settings.calls) {
    if (call.starts_with("Write")) writes.push_back(call);
  }
  return writes;
}

std::vector<std::string> Messages() { return fakes::eventLog.After("report 4 "); }

}  // namespace

TEST_CASE("the set that the strength chooses becomes the live parameters") {
  Prepare("0", "Best0", "10,20,70,90,60,2");
  ApplyBestPredictorParameters();
  const std::string write = "WritePredictorValue CyclicProbabilityPredictor ";
  CHECK(Writes() == std::vector<std::string>{
                        write + "FirstLastWeight 10", write + "SecondLastWeight 20",
                        write + "AgregationWeight 70", write + "StrengthHigh 90",
                        write + "StrengthLow 60", write + "DayGrouping 2",
                        "WriteSetting DisablePrediction 0", "WriteSetting ServiceFeedback 2"});
  CHECK(Messages() == std::vector<std::string>{"Predictor disabled 0\n"});
}

TEST_CASE("a chosen -1 turns prediction off") {
  Prepare("1", "Best1", "-1");
  ApplyBestPredictorParameters();
  CHECK(Writes() == std::vector<std::string>{"WriteSetting DisablePrediction 1",
                                             "WriteSetting ServiceFeedback 3"});
  CHECK(Messages() == std::vector<std::string>{"Predictor disabled 1\n"});
}

TEST_CASE("a missing or broken set changes no parameter") {
  const std::vector<std::string> nothing = {"WriteSetting DisablePrediction 0",
                                            "WriteSetting ServiceFeedback 0"};
  for (const char* const text : {"", "10,20,70,90,60"}) {
    Prepare("0", "Best0", text);
    ApplyBestPredictorParameters();
    CHECK(Writes() == nothing);
    CHECK(Messages() == std::vector<std::string>{"Predictor disabled 0\n"});
  }
  fakes::ResetSettings();
  ApplyBestPredictorParameters();
  CHECK(Writes() == nothing);
  CHECK(settings.calls[1] == "ReadPredictorValue CyclicProbabilityPredictor Best");
}

TEST_CASE("the strength's text is appended as it stands, or as the number that it is") {
  Prepare("0", "Best02", "1,2,3,4,5,6");
  settings.current.predictorValues[{kPredictorSection, "Strength"}] = fakes::Text("02");
  ApplyBestPredictorParameters();
  CHECK(Writes().size() == 8);
  Prepare("0", "Best2", "1,2,3,4,5,6");
  settings.current.predictorValues[{kPredictorSection, "Strength"}] = fakes::Number32(2);
  ApplyBestPredictorParameters();
  CHECK(Writes().size() == 8);
}

TEST_CASE("when a setting cannot be written, the others still are") {
  for (int failing = 3; failing <= 10; ++failing) {
    Prepare("0", "Best0", "10,20,70,90,60,2");
    settings.failer.firstFailing = failing;
    ApplyBestPredictorParameters();
    CHECK(Writes().size() == 8);
    CHECK(Messages() == std::vector<std::string>{"Predictor disabled 0\n"});
  }
}

}  // namespace dozewell
