// What the controller does to the machine: it sets predicted timeouts and timers on a suspend,
// handles the wakes of a night, and restores the user's timeouts.

#include <doctest/doctest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "controller/actions.h"
#include "controller/engine.h"
#include "fakes/clock_fake.h"
#include "fakes/driver_fake.h"
#include "fakes/journal.h"
#include "fakes/machine.h"
#include "fakes/power_fake.h"
#include "fakes/settings_fake.h"
#include "fakes/thread_fake.h"
#include "power/open_driver_device.h"
#include "support/calls.h"
#include "support/local_times.h"

namespace dozewell {
namespace {

using Predictions = std::vector<PredictionRecord>;

// Gives the answer that a test wants, and keeps the time that it was asked about.
struct FixedPredictor : IPredictor {
  std::function<Predictions()> answer;
  tm* askedFor;

  FixedPredictor(std::function<Predictions()> answerOf, tm* asked)
      : answer(std::move(answerOf)), askedFor(asked) {}
  Predictions GetPredictions(const tm& time) override {
    *askedFor = time;
    return answer();
  }
  Predictions PredictHibernate(const tm&) override { return {}; }
  Predictions PredictWake(const tm&) override { return {}; }
  float GetSlotProbability(int) override { return -1; }
};

// 18:00:20 on Saturday 2026-11-21, with the driver open.
const tm kNow = LocalTime(2026, 11, 21, 18, 0, 20);
const tm kNextMorning = LocalTime(2026, 11, 22, 8);

struct Suspending {
  fakes::Machine machine;
  tm askedFor = {};

  Suspending() {
    OpenDriverDevice();
    fakes::SetTime(kNow);
    fakes::TakeJournal();
  }
  void PredictBy(std::function<Predictions()> answer) {
    engine.predictor = std::make_unique<FixedPredictor>(std::move(answer), &askedFor);
  }
  void Predict(const Predictions& predictions) {
    PredictBy([predictions] { return predictions; });
  }
  Calls Suspend() { return Run(AH_SetPredictedSettings, SMEvent::Suspend); }
  Calls Run(void (*action)(const SMEventData*), SMEvent event = SMEvent::Activating) {
    const SMEventData data(event);
    fakes::TakeJournal();
    action(&data);
    return fakes::TakeJournal();
  }
};

const Calls kSuspendStarts = {"trace AH_SetPredictedSettings\n",
                              "trace Now: Sat Nov 21 18:00:20 2026\n",
                              "settings: ReadSetting DisablePrediction"};

Calls Decided(const std::string& hibernateAt, const std::string& sleepRestoredAt,
              const std::string& hibernateNextAt) {
  Calls calls;
  for (const std::string& line :
       {"Predicted Hibernate at: " + hibernateAt, "Predicted Sleep restored at: " + sleepRestoredAt,
        "Predicted Hibernate next at: " + hibernateNextAt}) {
    calls.push_back("report 4 " + line);
    calls.push_back("trace " + line);
  }
  return calls;
}

const Calls kNothingDecided = Decided("no prediction", "never", "no prediction");

// The calls that set a passed HA of some seconds.
Calls HASet(const std::string& seconds) {
  return {"power: get active",
          "power: write balanced AC hibernate " + seconds,
          "power: activate balanced",
          "power: get active",
          "power: write balanced DC hibernate " + seconds,
          "power: activate balanced"};
}

const Calls kUserHACached = {
    "power: get active", "power: read balanced AC hibernate", "settings: WriteSetting HA_AC 30",
    "power: get active", "power: read balanced DC hibernate", "settings: WriteSetting HA_DC 15"};

Calls TimerArmed(const std::string& minutes, const std::string& words) {
  return {"trace HW Timer Duration = " + minutes + " min\n", "driver: read timer",
          "driver: write timer " + words};
}

}  // namespace

TEST_CASE("a suspend with two predictions caches the user's timeout, then sets timeout and timer") {
  Suspending machine;
  fakes::driver.timer.words = {0x12345678, 0x10000001};
  machine.Predict({{kNow, 45}, {kNextMorning, 600}});
  // From 18:00:20 to 8:00 it is 839 minutes and 40 seconds.
  CHECK(machine.Suspend() ==
        Joined({kSuspendStarts,
                Decided("Sat Nov 21 18:45:20 2026\n", "Sun Nov 22 08:00:00 2026\n",
                        "Sun Nov 22 18:00:00 2026\n"),
                kUserHACached, HASet("2700"), TimerArmed("839", "12345678 98000347")}));
  CHECK(machine.askedFor == kNow);
  CHECK(engine.nextSleepTime == kNextMorning);
  CHECK(engine.nextHAMinutes == 600);
  CHECK(fakes::settings.current.values[L"HA_AC"] == fakes::Number32(30));
  CHECK(fakes::settings.current.values[L"HA_DC"] == fakes::Number32(15));
}

TEST_CASE("a suspend with one prediction sets the timeout and arms no timer") {
  Suspending machine;
  engine.nextSleepTime = kNextMorning;
  engine.nextHAMinutes = 7;
  machine.Predict({{kNow, 45}});
  CHECK(machine.Suspend() ==
        Joined({kSuspendStarts, Decided("Sat Nov 21 18:45:20 2026\n", "never", "no prediction"),
                kUserHACached, HASet("2700")}));
  CHECK_FALSE(engine.nextSleepTime.has_value());
  CHECK(engine.nextHAMinutes == kNoHA);
}

TEST_CASE("a second prediction that is not in the future counts as absent") {
  for (const int32_t seconds : {20, 19, 0}) {
    Suspending machine;
    machine.Predict({{kNow, 45}, {LocalTime(2026, 11, 21, 18, 0, seconds), 600}});
    CHECK(machine.Suspend() ==
          Joined({kSuspendStarts, Decided("Sat Nov 21 18:45:20 2026\n", "never", "no prediction"),
                  kUserHACached, HASet("2700")}));
    CHECK_FALSE(engine.nextSleepTime.has_value());
    CHECK(engine.nextHAMinutes == kNoHA);
  }
}

TEST_CASE("a next use less than a minute away shows a duration of 0 and arms nothing") {
  struct Row {
    int32_t second;
    const char* shown;
  };
  for (const Row& row :
       {Row{21, "Sat Nov 21 18:00:21 2026\n"}, {79, "Sat Nov 21 18:01:19 2026\n"}}) {
    Suspending machine;
    machine.Predict({{kNow, 45}, {LocalTime(2026, 11, 21, 18, 0, row.second), kNoPrediction}});
    CHECK(machine.Suspend() ==
          Joined({kSuspendStarts,
                  Decided("Sat Nov 21 18:45:20 2026\n", row.shown, "no prediction"),
                  kUserHACached,
                  HASet("2700"),
                  {"trace HW Timer Duration = 0 min\n"}}));
    CHECK(engine.nextSleepTime.has_value());
  }
}

TEST_CASE("a next use one minute away arms the timer") {
  Suspending machine;
  machine.Predict({{kNow, 45}, {LocalTime(2026, 11, 21, 18, 1, 20), 5}});
  CHECK(machine.Suspend() ==
        Joined({kSuspendStarts,
                Decided("Sat Nov 21 18:45:20 2026\n", "Sat Nov 21 18:01:20 2026\n",
                        "Sat Nov 21 18:06:20 2026\n"),
                kUserHACached, HASet("2700"), TimerArmed("1", "00000000 88000001")}));
}

TEST_CASE("a timer's minutes are cut to 20 bits") {
  Suspending machine;
  tm far = kNow;
  AddSecondsToTime(&far, 0x100003 * 60);
  machine.Predict({{kNow, 45}, {far, kNoPrediction}});
  const Calls calls = machine.Suspend();
  CHECK(Calls(calls.end() - 3, calls.end()) == TimerArmed("1048579", "00000000 88000003"));
}

TEST_CASE("a first prediction without minutes leaves the timeout alone, and a second counts") {
  Suspending machine;
  machine.Predict({{kNow, kNoPrediction}});
  CHECK(machine.Suspend() == Joined({kSuspendStarts, kNothingDecided}));
  machine.Predict({{kNow, kNoPrediction}, {kNextMorning, 600}});
  CHECK(machine.Suspend() == Joined({kSuspendStarts,
                                     Decided("no prediction", "Sun Nov 22 08:00:00 2026\n",
                                             "Sun Nov 22 18:00:00 2026\n"),
                                     TimerArmed("839", "00000000 88000347")}));
  CHECK(fakes::settings.current.values.empty());
  CHECK(fakes::power.calls.empty());
}

TEST_CASE("a predictor without an answer decides nothing") {
  Suspending machine;
  engine.nextSleepTime = kNextMorning;
  engine.nextHAMinutes = 7;
  machine.Predict({});
  CHECK(machine.Suspend() == Joined({kSuspendStarts, kNothingDecided}));
  CHECK_FALSE(engine.nextSleepTime.has_value());
  CHECK(engine.nextHAMinutes == kNoHA);
}

TEST_CASE("with prediction disabled the predictor is not asked and nothing is touched") {
  for (const bool inFallback : {false, true}) {
    Suspending machine;
    fakes::Key& key = inFallback ? fakes::settings.branding : fakes::settings.current;
    key.values[L"DisablePrediction"] = fakes::Number32(1);
    engine.nextSleepTime = kNextMorning;
    engine.nextHAMinutes = 7;
    machine.Predict({{kNow, 45}, {kNextMorning, 600}});
    CHECK(machine.Suspend() == Joined({kSuspendStarts, kNothingDecided}));
    CHECK(machine.askedFor == tm{});
    CHECK_FALSE(engine.nextSleepTime.has_value());
    CHECK(engine.nextHAMinutes == kNoHA);
    CHECK_FALSE(fakes::settings.current.values.contains(L"HA_AC"));
  }
}

TEST_CASE("only a setting of 1 disables prediction") {
  for (const uint32_t value : {0U, 2U, 0xFFFFFFFFU}) {
    Suspending machine;
    fakes::settings.current.values[L"DisablePrediction"] = fakes::Number32(value);
    machine.Predict({});
    machine.Suspend();
    CHECK(machine.askedFor == kNow);
  }
}

TEST_CASE("without a predictor nothing is decided") {
  Suspending machine;
  CHECK(machine.Suspend() == Joined({kSuspendStarts, kNothingDecided}));
}

TEST_CASE("a predictor that throws counts as one without an answer, and its message is logged") {
  struct Silent : std::exception {
    const char* what() const noexcept override { return nullptr; }
  };
  struct Row {
    std::function<Predictions()> answer;
    const char* message;
  };
  const Row rows[] = {
      {[]() -> Predictions { throw std::runtime_error("the past is dark"); }, "the past is dark"},
      {[]() -> Predictions { throw Silent(); }, "Unknown exception"},
  };
  for (const Row& row : rows) {
    Suspending machine;
    engine.nextSleepTime = kNextMorning;
    engine.nextHAMinutes = 7;
    machine.PredictBy(row.answer);
    CHECK(machine.Suspend() ==
          Joined({kSuspendStarts,
                  {std::string("report 1 ") + row.message, std::string("trace ") + row.message},
                  kNothingDecided}));
    CHECK_FALSE(engine.nextSleepTime.has_value());
    CHECK(engine.nextHAMinutes == kNoHA);
  }
}

TEST_CASE("a predictor's unknown exception is logged and thrown on") {
  const std::string text =
      "AH_SetPredictedSettings: PredictorObj::GetPredictions threw an unknown exception";
  Suspending machine;
  engine.nextSleepTime = kNextMorning;
  engine.nextHAMinutes = 7;
  machine.PredictBy([]() -> Predictions { throw 42; });
  CHECK_THROWS_AS(machine.Suspend(), int);
  CHECK(fakes::TakeJournal() == Joined({kSuspendStarts, {"report 1 " + text, "trace " + text}}));
  // Nothing was decided before it was thrown.
  CHECK(engine.nextSleepTime == kNextMorning);
  CHECK(engine.nextHAMinutes == 7);
}

TEST_CASE("the timeout counts from now to the end of the first idle period") {
  Suspending machine;
  machine.Predict({{LocalTime(2026, 11, 21, 18, 10), 45}});
  // 9 minutes and 40 seconds, and 45 minutes.
  CHECK(machine.Suspend() ==
        Joined({kSuspendStarts, Decided("Sat Nov 21 18:55:00 2026\n", "never", "no prediction"),
                kUserHACached, HASet("3240")}));
}

TEST_CASE("a timeout of 0 minutes is set to 1, a negative one is not set") {
  Suspending machine;
  machine.Predict({{kNow, 0}});
  CHECK(machine.Suspend() ==
        Joined({kSuspendStarts, Decided("Sat Nov 21 18:00:20 2026\n", "never", "no prediction"),
                kUserHACached, HASet("60")}));
  Suspending other;
  other.Predict({{LocalTime(2026, 11, 21, 17), 10}});
  CHECK(other.Suspend() ==
        Joined({kSuspendStarts, Decided("Sat Nov 21 17:10:00 2026\n", "never", "no prediction"),
                kUserHACached}));
}

TEST_CASE("a user's timeout that cannot be read leaves the cached one as it was") {
  Suspending machine;
  fakes::settings.current.values[L"HA_AC"] = fakes::Number32(99);
  fakes::settings.current.values[L"HA_DC"] = fakes::Number32(98);
  fakes::power.failer = {.firstFailing = 1, .failures = 2};
  machine.Predict({{kNow, 45}});
  CHECK(machine.Suspend() ==
        Joined({kSuspendStarts,
                Decided("Sat Nov 21 18:45:20 2026\n", "never", "no prediction"),
                {"power: get active", "power: get active"},
                HASet("2700")}));
  CHECK(fakes::settings.current.values[L"HA_AC"] == fakes::Number32(99));
  CHECK(fakes::settings.current.values[L"HA_DC"] == fakes::Number32(98));
}

TEST_CASE("a timeout that cannot be set is reported and the timer is armed") {
  Suspending machine;
  fakes::power.failer = {.firstFailing = 5, .failures = 100};
  machine.Predict({{kNow, 45}, {kNextMorning, 600}});
  const Calls calls = machine.Suspend();
  CHECK(Calls(calls.end() - 7, calls.end()) ==
        Joined({{"power: get active", "report 1 Failed to set passed HA value for AC",
                 "power: get active", "report 1 Failed to set passed HA value for DC"},
                TimerArmed("839", "00000000 88000347")}));
}

TEST_CASE("without a driver arming does nothing, silently") {
  fakes::Machine machine;
  fakes::SetTime(kNow);
  engine.nextSleepTime = kNextMorning;
  AH_RetryPredictedHWTimer(nullptr);
  CHECK(fakes::TakeJournal() == Calls{"trace AH_RetryPredictedHWTimer\n",
                                      "trace HW Timer Duration = 839 min\n",
                                      "driver: read timer on no device"});
}

TEST_CASE("only a suspend event is stamped") {
  Suspending machine;
  CHECK(machine.Run(AH_TimeStampEvent, SMEvent::Suspend) == Calls{"trace AH_TimeStampEvent\n"});
  CHECK(engine.suspendTime == kNow);
  fakes::SetTime(kNextMorning);
  for (const SMEvent event : {SMEvent::Activating, SMEvent::ShuttingDown, SMEvent::ParamChanging,
                              SMEvent::Uninitializing, SMEvent::Saving, SMEvent::ResetHistory}) {
    CHECK(machine.Run(AH_TimeStampEvent, event) == Calls{});
    CHECK(engine.suspendTime == kNow);
  }
  AH_TimeStampEvent(nullptr);
  CHECK(engine.suspendTime == kNow);
}

TEST_CASE("the event's own time is stamped, not the time of its handling") {
  Suspending machine;
  const SMEventData event(SMEvent::Suspend);
  fakes::SetTime(kNextMorning);
  AH_TimeStampEvent(&event);
  CHECK(engine.suspendTime == kNow);
}

TEST_CASE("the timer is armed once more, for the time that is left, and then forgotten") {
  Suspending machine;
  engine.nextSleepTime = kNextMorning;
  fakes::SetTime(LocalTime(2026, 11, 21, 23, 0, 1));
  CHECK(machine.Run(AH_RetryPredictedHWTimer) ==
        Joined({{"trace AH_RetryPredictedHWTimer\n"}, TimerArmed("539", "00000000 8800021b")}));
  CHECK_FALSE(engine.nextSleepTime.has_value());
  CHECK(machine.Run(AH_RetryPredictedHWTimer) == Calls{});
}

TEST_CASE("a timer whose time has come is not armed once more, and forgotten") {
  struct Row {
    tm now;
    const char* minutes;
  };
  const Row rows[] = {
      {LocalTime(2026, 11, 22, 7, 59, 1), "0"},
      {LocalTime(2026, 11, 22, 8), "0"},
      {LocalTime(2026, 11, 22, 8, 2), "-2"},
  };
  for (const Row& row : rows) {
    Suspending machine;
    engine.nextSleepTime = kNextMorning;
    fakes::SetTime(row.now);
    CHECK(machine.Run(AH_RetryPredictedHWTimer) ==
          Calls{"trace AH_RetryPredictedHWTimer\n",
                std::string("trace HW Timer Duration = ") + row.minutes + " min\n"});
    CHECK_FALSE(engine.nextSleepTime.has_value());
  }
}

TEST_CASE("a timer that the driver refuses is forgotten too") {
  Suspending machine;
  engine.nextSleepTime = kNextMorning;
  fakes::driver.failer.firstFailing = 1;
  CHECK(machine.Run(AH_RetryPredictedHWTimer) == Calls{"trace AH_RetryPredictedHWTimer\n",
                                                       "trace HW Timer Duration = 839 min\n",
                                                       "driver: read timer"});
  CHECK_FALSE(engine.nextSleepTime.has_value());
}

TEST_CASE("the next predicted timeout is set once, for both sources") {
  Suspending machine;
  engine.nextHAMinutes = 600;
  CHECK(machine.Run(AH_SetNextPredictedHA) ==
        Joined({{"trace AH_SetNextPredictedHA\n"}, HASet("36000")}));
  CHECK(engine.nextHAMinutes == kNoHA);
  CHECK(machine.Run(AH_SetNextPredictedHA) == Calls{});
}

TEST_CASE("a next predicted timeout of 0 is set to 1 minute, one below 0 is only forgotten") {
  Suspending machine;
  engine.nextHAMinutes = 0;
  CHECK(machine.Run(AH_SetNextPredictedHA) ==
        Joined({{"trace AH_SetNextPredictedHA\n"}, HASet("60")}));
  engine.nextHAMinutes = static_cast<uint32_t>(-2);
  CHECK(machine.Run(AH_SetNextPredictedHA) == Calls{"trace AH_SetNextPredictedHA\n"});
  CHECK(engine.nextHAMinutes == kNoHA);
}

TEST_CASE("the user's timeouts are restored, each taken from the cache before it is set") {
  Suspending machine;
  fakes::settings.current.values[L"HA_AC"] = fakes::Number32(30);
  fakes::settings.current.values[L"HA_DC"] = fakes::Number32(15);
  CHECK(machine.Run(AH_RestoreHA) ==
        Calls{"trace AH_RestoreHA\n", "settings: ReadSetting HA_AC delete", "power: get active",
              "power: write balanced AC hibernate 1800", "power: activate balanced",
              "settings: ReadSetting HA_DC delete", "power: get active",
              "power: write balanced DC hibernate 900", "power: activate balanced"});
  CHECK(fakes::settings.current.values.empty());
  CHECK(machine.Run(AH_RestoreHA) == Calls{"trace AH_RestoreHA\n",
                                           "settings: ReadSetting HA_AC delete",
                                           "settings: ReadSetting HA_DC delete"});
}

TEST_CASE("an armed timer is left to the driver") {
  Suspending machine;
  engine.nextSleepTime = kNextMorning;
  CHECK(machine.Run(AH_CancelHWTimer) == Calls{"trace AH_CancelHWTimer\n"});
  CHECK(engine.nextSleepTime == kNextMorning);
}

TEST_CASE("the machine is sent to sleep on another thread, once the action has returned") {
  Suspending machine;
  engine.nextSleepTime = kNextMorning;
  CHECK(machine.Run(AH_ProgramSleep) == Calls{"trace AH_ProgramSleep\n", "thread: start"});
  CHECK_FALSE(engine.nextSleepTime.has_value());
  REQUIRE(fakes::threads.waiting.size() == 1);
  fakes::threads.Run();
  CHECK(fakes::TakeJournal() == Calls{"power: suspend"});
}

TEST_CASE("a machine that does not go to sleep is reported as a success event") {
  Suspending machine;
  machine.Run(AH_ProgramSleep);
  fakes::power.failer.firstFailing = 1;
  fakes::threads.Run();
  CHECK(fakes::TakeJournal() ==
        Calls{"power: suspend", "report 0 Failed to move the system to sleep"});
}

TEST_CASE("without a thread the machine stays awake, and the next sleep time is forgotten") {
  Suspending machine;
  engine.nextSleepTime = kNextMorning;
  fakes::threads.failer.firstFailing = 1;
  CHECK(machine.Run(AH_ProgramSleep) == Calls{"trace AH_ProgramSleep\n", "thread: start"});
  CHECK_FALSE(engine.nextSleepTime.has_value());
  fakes::threads.Run();
  CHECK(fakes::TakeJournal() == Calls{});
}

}  // namespace dozewell
