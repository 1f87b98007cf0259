// The controller with the predictor of rates, and changes from one predictor to the other.

#include <doctest/doctest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "base/file.h"
#include "controller/actions.h"
#include "controller/controller.h"
#include "controller/engine.h"
#include "controller/state_machine/state_machine.h"
#include "fakes/clock_fake.h"
#include "fakes/driver_fake.h"
#include "fakes/journal.h"
#include "fakes/machine.h"
#include "fakes/power_fake.h"
#include "fakes/settings_fake.h"
#include "fakes/thread_fake.h"
#include "fakes/wake_timer_fake.h"
#include "power/open_driver_device.h"
#include "prediction/cyclic_probability_predictor.h"
#include "prediction/history_recorder.h"
#include "prediction/rates/lasting_rates_predictor.h"
#include "prediction/rates/rates_file.h"
#include "settings/predictor_values.h"
#include "support/calls.h"
#include "support/sleeps.h"

namespace dozewell {
namespace {

using fakes::settings;

void Choose(const char* predictor) {
  settings.current.predictorValues[{kPredictorSection, kPredictorName}] = fakes::Text(predictor);
}

void SetTimeTo(int64_t seconds) {
  tm time;
  TmFromSeconds(seconds, time);
  fakes::SetTime(time);
}

void PostAt(int64_t seconds, SMEvent event) {
  SetTimeTo(seconds);
  PostEvent(std::make_unique<SMEventData>(event));
}

// A controller that was started on a Monday, with the predictor that is chosen.
struct Controlled {
  fakes::Machine machine;

  explicit Controlled(const char* predictor) {
    SetTimeTo(kEvening - kHour);
    Choose(predictor);
    StartController();
    starting = fakes::TakeJournal();
  }
  std::wstring RatesFile() const { return machine.Folder() + kRatesFileName; }

  // Nights from 22:00 to 07:00, after the last of which it is 07:00.
  void Sleep(int nights) {
    for (int night = 0; night < nights; ++night, ++slept) {
      PostAt(kEvening + slept * kDay, SMEvent::Suspend);
      PostAt(kEvening + slept * kDay + 9 * kHour, SMEvent::Activating);
    }
    fakes::TakeJournal();
  }
  // The calls of the next evening's suspend.
  Calls Suspend() const {
    fakes::TakeJournal();
    PostAt(kEvening + slept * kDay, SMEvent::Suspend);
    return fakes::TakeJournal();
  }
  Calls Save() const {
    fakes::TakeJournal();
    PostAt(kEvening + slept * kDay - kHour, SMEvent::Saving);
    return fakes::TakeJournal();
  }

  Calls starting;  // the calls of the start
  int slept = 0;
};

const LastingRatesPredictor* Rates() {
  return dynamic_cast<LastingRatesPredictor*>(engine.predictor.get());
}

bool Contains(const Calls& calls, const std::string& text) {
  return std::ranges::any_of(
      calls, [&](const std::string& call) { return call.find(text) != std::string::npos; });
}

Calls ParametersChanged() {
  fakes::TakeJournal();
  PostEvent(std::make_unique<ParamChangeEventData>(kStrengthName));
  return fakes::TakeJournal();
}

constexpr const char* kUnknown = "Predictor is neither slots nor rates, slots is used";

}  // namespace

TEST_CASE("the value Predictor chooses the predictor") {
  CHECK(Controlled("rates").machine.HasNoFiles());
  for (const auto& [name, isRates] : {std::pair{"rates", true},
                                      {"slots", false},
                                      {"", false},
                                      {"Rates", false},
                                      {"rates2", false}}) {
    const Controlled controlled(name);
    CHECK((Rates() != nullptr) == isRates);
    CHECK(RatesInForce == isRates);
  }
}

TEST_CASE("a value that names no predictor is reported once, when the controller starts") {
  for (const char* const name : {"rates", "slots", ""}) {
    CHECK_FALSE(Contains(Controlled(name).starting, kUnknown));
  }
  const Controlled controlled("best");
  CHECK(Contains(controlled.starting, std::string("report 1 ") + kUnknown));
  CHECK_FALSE(Contains(controlled.Save(), kUnknown));
}

TEST_CASE("rates learn every night and plan the next one") {
  Controlled controlled("rates");
  OpenDriverDevice();
  controlled.Sleep(10);
  CHECK(Rates()->State().learnt.sleeps == 10);
  const Calls calls = controlled.Suspend();
  CHECK_FALSE(Contains(calls, "Predicted Hibernate at: no prediction"));
  CHECK(Contains(calls, "driver: write timer"));
  REQUIRE(engine.nextSleepTime);
  CHECK(engine.nextSleepTime->tm_hour == 6);
}

TEST_CASE("rates plan no wake without a driver") {
  Controlled controlled("rates");
  controlled.Sleep(10);
  const Calls calls = controlled.Suspend();
  CHECK_FALSE(Contains(calls, "Predicted Hibernate at: no prediction"));
  CHECK(Contains(calls, "Predicted Sleep restored at: never"));
  CHECK_FALSE(Contains(calls, "driver:"));
  CHECK_FALSE(engine.nextSleepTime);
}

TEST_CASE("rates plan a wake by the system's timer, and the user's return cancels it") {
  Controlled controlled("rates");
  fakes::driver.present = false;
  fakes::settings.current.predictorValues[{kPredictorSection, kWakeTimerName}] =
      fakes::Text("windows");
  fakes::power.values["balanced AC wake timers"] = 1;
  OpenDriverDevice();
  controlled.Sleep(10);
  controlled.Suspend();
  REQUIRE(engine.nextSleepTime);
  CHECK(engine.nextSleepTime->tm_hour == 6);
  CHECK(fakes::systemTimer.due == SecondsFromTm(*engine.nextSleepTime));
  PostAt(kEvening + controlled.slept * kDay + 2 * kHour, SMEvent::Activating);
  CHECK_FALSE(fakes::systemTimer.due);
  fakes::power.values["balanced AC wake timers"] = 0;
  PostAt(kEvening + controlled.slept * kDay + 3 * kHour, SMEvent::Suspend);
  CHECK_FALSE(engine.nextSleepTime);
  CHECK_FALSE(fakes::systemTimer.due);
}

TEST_CASE("a daily save keeps what rates know") {
  Controlled controlled("rates");
  controlled.Sleep(4);
  const auto before = std::make_unique<RatesState>(Rates()->State());
  controlled.Save();
  before->newest = kEvening + 4 * kDay - kHour;
  CHECK(Rates()->State() == *before);
  const auto saved = ReadRatesFile(ReadWholeFile(controlled.RatesFile()).value());
  REQUIRE(saved);
  CHECK(*saved == *before);
}

TEST_CASE("a daily save takes up another predictor, which catches up") {
  Controlled controlled("slots");
  controlled.Sleep(4);
  Choose("rates");
  controlled.Save();
  REQUIRE(Rates() != nullptr);
  CHECK(Rates()->State().learnt.sleeps == 4);
  controlled.Sleep(2);
  Choose("slots");
  controlled.Save();
  CHECK(Rates() == nullptr);
  CHECK_FALSE(RatesInForce);
  controlled.Sleep(3);
  Choose("rates");
  controlled.Save();
  REQUIRE(Rates() != nullptr);
  CHECK(Rates()->State().learnt.sleeps == 9);
}

TEST_CASE("a reset forgets rates and deletes their file") {
  Controlled controlled("rates");
  controlled.Sleep(4);
  controlled.Save();
  CHECK(ReadWholeFile(controlled.RatesFile()));
  PostEvent(std::make_unique<SMEventData>(SMEvent::ResetHistory));
  CHECK(controlled.machine.HasNoFiles());
  REQUIRE(Rates() != nullptr);
  CHECK(Rates()->State() == RatesState());
}

TEST_CASE("a reset deletes the file of rates whichever predictor is in force") {
  Controlled controlled("slots");
  REQUIRE(WriteWholeFile(controlled.RatesFile(), "old", 3));
  PostEvent(std::make_unique<SMEventData>(SMEvent::ResetHistory));
  CHECK(controlled.machine.HasNoFiles());
}

TEST_CASE("with rates a changed parameter writes nothing, and the new strength counts") {
  Controlled controlled("rates");
  controlled.Sleep(4);
  settings.current.predictorValues[{kPredictorSection, "WR"}] = fakes::Text("0 100");
  settings.current.predictorValues[{kPredictorSection, "Strength"}] = fakes::Text("1");
  settings.current.predictorValues[{kPredictorSection, "Best1"}] = fakes::Text("-1");
  const fakes::Key before = settings.current;
  const Calls calls = ParametersChanged();
  CHECK(Contains(calls, "trace AH_SetPredictorConfig"));
  CHECK_FALSE(Contains(calls, "Predictor disabled"));
  CHECK_FALSE(Contains(calls, "WriteSetting"));
  CHECK(settings.current.values == before.values);
  CHECK(settings.current.predictorValues == before.predictorValues);
  // Eight days after Friday, 22:00.
  CHECK(Contains(controlled.Suspend(), "Predicted Hibernate at: Sat Jan 17 22:00:00 2026"));
}

TEST_CASE("rates do not obey a disabling that came of a search") {
  Controlled controlled("rates");
  controlled.Sleep(4);
  settings.current.values[L"DisablePrediction"] = fakes::Number32(1);
  settings.current.values[L"ServiceFeedback"] = fakes::Number32(3);
  CHECK_FALSE(Contains(controlled.Suspend(), "Predicted Hibernate at: no prediction"));
}

TEST_CASE("rates obey any other disabling") {
  for (const uint32_t feedback : {0U, 1U, 2U, 4U}) {
    Controlled controlled("rates");
    controlled.Sleep(4);
    settings.current.values[L"DisablePrediction"] = fakes::Number32(1);
    settings.current.values[L"ServiceFeedback"] = fakes::Number32(feedback);
    CHECK(Contains(controlled.Suspend(), "Predicted Hibernate at: no prediction"));
  }
  Controlled controlled("rates");
  controlled.Sleep(4);
  settings.current.values[L"DisablePrediction"] = fakes::Number32(1);
  settings.current.values.erase(L"ServiceFeedback");
  CHECK(Contains(controlled.Suspend(), "Predicted Hibernate at: no prediction"));
}

TEST_CASE("after a change back the predictor of slots obeys its search again") {
  Controlled controlled("rates");
  controlled.Sleep(8);
  settings.current.values[L"DisablePrediction"] = fakes::Number32(1);
  settings.current.values[L"ServiceFeedback"] = fakes::Number32(3);
  Choose("slots");
  controlled.Save();
  const Calls calls = controlled.Suspend();
  CHECK(Contains(calls, "Predicted Hibernate at: no prediction"));
  CHECK_FALSE(Contains(calls, "ReadSetting ServiceFeedback"));
  PostAt(kEvening + controlled.slept * kDay + 9 * kHour, SMEvent::Activating);
  CHECK(Contains(ParametersChanged(), "Predictor disabled 0"));
}

TEST_CASE("without the value a suspend and a changed parameter make the calls that they made") {
  Controlled controlled("");
  controlled.Sleep(4);
  settings.current.values[L"DisablePrediction"] = fakes::Number32(1);
  settings.current.values[L"ServiceFeedback"] = fakes::Number32(3);
  const Calls calls = controlled.Suspend();
  CHECK(Contains(calls, "Predicted Hibernate at: no prediction"));
  CHECK_FALSE(Contains(calls, "ReadSetting ServiceFeedback"));
}

}  // namespace dozewell
