// Resetting the history and setting the predictor's strength.

#include <doctest/doctest.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

#include "controller/controller.h"
#include "controller/engine.h"
#include "controller/state_machine/state_machine.h"
#include "fakes/served_machine.h"
#include "fakes/settings_fake.h"
#include "prediction/configurations.h"
#include "rpc/procedures.h"
#include "support/local_times.h"

namespace dozewell {
namespace {

using fakes::Answer;
using fakes::Ask;
using fakes::kHighest;
using fakes::kLowest;
using fakes::kRefusedUnasked;
using fakes::ServedMachine;
using fakes::TakeProvisionsAway;

fakes::Value CurrentStrength() {
  return fakes::settings.current.predictorValues[{kPredictorSection, "Strength"}];
}

// Keeps the last section it heard of and the strength at that time, and then runs what it is given.
struct Listener : IConfigurationsListener {
  std::string section;
  fakes::Value strength;
  std::function<void()> then = [] {};

  void OnConfigurationChanged(std::string changed) override {
    section = changed;
    strength = CurrentStrength();
    then();
  }
};

void SetDefaultStrength(const fakes::Value& value) {
  fakes::settings.defaults.predictorValues[{kPredictorSection, "Strength"}] = value;
}

}  // namespace

TEST_CASE("the history is not reset while the controller is off") {
  const ServedMachine machine;
  CHECK(Ask(ResetHistory) == kRefusedUnasked);
  StartController();
  StopController();
  CHECK(Ask(ResetHistory) == kRefusedUnasked);
}

TEST_CASE("a reset is posted to the running controller with the time of the call") {
  const ServedMachine machine;
  StartController();
  fakes::SetTime(LocalTime(2026, 11, 22, 14, 3, 4));
  CHECK(Ask(ResetHistory) ==
        Answer{true,
               {"trace State Machine event: ", "trace 22/11/2026 14:3:4 - ResetHistory", "trace \n",
                "report 4 22/11/2026 14:3:4 - ResetHistory", "trace AH_ResetHistory\n",
                "settings: GetDataFolder", "settings: WriteSetting ServiceFeedback 1",
                "settings: GetDataFolder", "settings: ReadSetting TimeResolution",
                "settings: ReadSetting TimeResolution"}});
  CHECK(StateMachine->current == SMState::Active);
  CHECK(engine.predictor != nullptr);
}

TEST_CASE("a reset that the controller's state does not take is answered all the same") {
  const ServedMachine machine;
  StartController();
  PostEvent(std::make_unique<SMEventData>(SMEvent::Suspend));
  const Answer answer = Ask(ResetHistory);
  CHECK(answer.answer);
  CHECK(answer.calls[4] ==
        "report 1 State Machine Error: State: Suspended, Undefined event: 21/11/2026 8:5:9 - "
        "ResetHistory");
  CHECK(StateMachine->current == SMState::Suspended);
}

TEST_CASE("a reset after which no predictor can be built is answered all the same") {
  const ServedMachine machine;
  StartController();
  TakeProvisionsAway();
  CHECK(Ask(ResetHistory).answer);
  CHECK(engine.predictor == nullptr);
  CHECK(Ping());
}

TEST_CASE("the strength is written as decimal text") {
  struct Row {
    int32_t strength;
    const char* text;
  };
  const Row rows[] = {{0, "0"},
                      {55, "55"},
                      {100, "100"},
                      {-1, "-1"},
                      {kHighest, "2147483647"},
                      {kLowest, "-2147483648"}};
  for (const Row& row : rows) {
    const ServedMachine machine;
    CHECK(Ask([&] { return SetStrength(row.strength); }) ==
          Answer{true,
                 {std::string("settings: WritePredictorValue CyclicProbabilityPredictor "
                              "Strength ") +
                  row.text}});
    CHECK(CurrentStrength() == fakes::Text(row.text));
    int32_t strength = 77;
    CHECK(GetStrength(&strength));
    CHECK(strength == row.strength);
  }
}

TEST_CASE("the running controller hears of a new strength after it was written") {
  const ServedMachine machine;
  StartController();
  Listener listener;
  engine.configurations->RegisterListener(&listener);
  const Answer answer = Ask([] { return SetStrength(40); });
  CHECK(answer.answer);
  CHECK(answer.calls[0] == "settings: WritePredictorValue CyclicProbabilityPredictor Strength 40");
  CHECK(std::ranges::count(answer.calls, "report 4 21/11/2026 8:5:9 - ParamChanging") == 1);
  CHECK(listener.section == "Strength");
  CHECK(listener.strength == fakes::Text("40"));
}

TEST_CASE("a strength that cannot be written is refused, and the controller hears of it") {
  const ServedMachine machine;
  fakes::settings.failer = {.firstFailing = 1};
  CHECK_FALSE(SetStrength(40));
  StartController();
  Listener listener;
  engine.configurations->RegisterListener(&listener);
  fakes::settings.current.predictorValues[{kPredictorSection, "Strength"}] = fakes::Number64(1);
  CHECK_FALSE(SetStrength(40));
  CHECK(listener.section == "Strength");
}

TEST_CASE("what a listener throws does not reach the client") {
  const ServedMachine machine;
  StartController();
  Listener listener;
  engine.configurations->RegisterListener(&listener);
  listener.then = [] { throw std::runtime_error("no"); };
  CHECK(SetStrength(40));
  listener.then = [] { throw 42; };
  CHECK(SetStrength(41));
  CHECK(CurrentStrength() == fakes::Text("41"));
}

TEST_CASE("the strength is read with its fallbacks, and an absent one is 0") {
  const ServedMachine machine;
  int32_t strength = 77;
  CHECK(Ask([&] { return GetStrength(&strength); }) == Answer{true, {}});
  CHECK(fakes::settings.calls.back() == "ReadPredictorValue CyclicProbabilityPredictor Strength");
  CHECK(strength == 0);
  SetDefaultStrength(fakes::Text("30"));
  CHECK(GetStrength(&strength));
  CHECK(strength == 30);
  SetStrength(60);
  CHECK(GetStrength(&strength));
  CHECK(strength == 60);
}

TEST_CASE("a strength's text counts as far as it is a number") {
  struct Row {
    const char* text;
    int32_t strength;
  };
  const Row rows[] = {{"", 0},      {"x", 0},  {"  42", 42}, {"-7", -7},
                      {"12ab", 12}, {"+5", 5}, {"0x10", 0}};
  for (const Row& row : rows) {
    CAPTURE(row.text);
    const ServedMachine machine;
    SetDefaultStrength(fakes::Text(row.text));
    int32_t strength = 77;
    CHECK(GetStrength(&strength));
    CHECK(strength == row.strength);
  }
  const ServedMachine machine;
  SetDefaultStrength(fakes::Number32(45));
  int32_t strength = 77;
  CHECK(GetStrength(&strength));
  CHECK(strength == 45);
}

}  // namespace dozewell
