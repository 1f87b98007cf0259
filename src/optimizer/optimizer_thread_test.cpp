#include "optimizer/optimizer_thread.h"

#include <doctest/doctest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/file.h"
#include "base/process_flags.h"
#include "controller/state_machine/state_machine.h"
#include "fakes/clock_fake.h"
#include "fakes/event_log_fake.h"
#include "fakes/journal.h"
#include "fakes/lock_fake.h"
#include "fakes/machine.h"
#include "fakes/power_fake.h"
#include "fakes/settings_fake.h"
#include "fakes/thread_fake.h"
#include "optimizer/simulator/stop_request.h"
#include "prediction/configurations.h"
#include "prediction/history_recorder.h"
#include "prediction/predictor_choice.h"
#include "support/calls.h"
#include "support/sim_days.h"

namespace dozewell {
namespace {

using fakes::settings;
using fakes::threads;

constexpr int64_t kDay = 86400;

// A machine on line power with a grid of one set and one scoring weight, on which the optimizer is
// launched. Events are shown without their time.
struct Optimizer {
  fakes::Machine machine;
  int64_t now = fakes::clock.utcSeconds;

  Optimizer() {
    for (const auto& [name, text] : {std::pair{"StrengthHighRange", "90"},
                                     {"StrengthLowRange", "60"},
                                     {"FirstLastWeightRange", "10"},
                                     {"SecondLastWeightRange", "20"},
                                     {"DayGroupingRange", "2"},
                                     {"WR", "50"}}) {
      settings.current.predictorValues[{kPredictorSection, name}] = fakes::Text(text);
    }
    fakes::eventLog = {};
  }

  void Set(const wchar_t* name, uint32_t value) const {
    settings.current.values[name] = fakes::Number32(value);
  }
  void SetLastRun(int64_t secondsAgo) const {
    settings.current.values[L"LastOptimizerRun"] = fakes::Number64(now - secondsAgo);
  }
  // Makes a run due.
  void MakeDue() const { SetLastRun(31 * kDay); }
  void OnBattery(uint32_t current, uint32_t total) const {
    fakes::power.acLineStatus = kLineOffline;
    Set(L"CurrentOptimizerAttemptsInDCmode", current);
    Set(L"TotalOptimizerAttemptsInDCmode", total);
  }

  std::optional<fakes::Value> Stored(const wchar_t* name) const {
    const auto found = settings.current.values.find(name);
    if (found == settings.current.values.end()) return std::nullopt;
    return found->second;
  }
  std::string Best0() const {
    const auto found = settings.current.predictorValues.find({kPredictorSection, "Best0"});
    if (found == settings.current.predictorValues.end()) return "";
    return {found->second.data.begin(), found->second.data.end() - 1};
  }

  // Launches, lets the thread run to its end, and returns the events that were logged.
  Calls Launch() const {
    fakes::eventLog.calls.clear();
    LaunchOptimizerThread();
    threads.Run();
    return TakeEvents();
  }
  Calls TakeEvents() const {
    Calls events;
    for (const std::string& call : fakes::eventLog.After("report ")) {
      // The text after "4 21/11/2026 8:5:9 - ".
      events.push_back(call.substr(0, 2) + call.substr(call.find(" - ") + 3));
    }
    fakes::eventLog.calls.clear();
    return events;
  }
};

Calls Launched(int number) {
  return {"4 Launch optimizer thread, " + std::to_string(number) + "\n"};
}

// True when the last event is the one that ends a run. The milliseconds in it vary.
bool EndsRun(Calls events) {
  return !events.empty() && events.back().starts_with("4 Optimizer runtime ");
}

// Four sleeps of 20 minutes each, none of which is in the file yet.
void RecordFourSleeps() {
  constexpr int64_t kFirstSuspend = 1795223109;  // 2026-11-21 01:05:09
  for (int64_t sleep = 0; sleep < 4; ++sleep) {
    const int64_t suspend = kFirstSuspend + sleep * 3600;
    AppendToHistory(suspend, /*asleep=*/true);
    AppendToHistory(suspend + 20 * 60, /*asleep=*/false);
  }
}

}  // namespace

TEST_CASE("the first launch stores the time and runs nothing") {
  const Optimizer optimizer;
  CHECK(optimizer.Launch() == Launched(1));
  CHECK(optimizer.Stored(L"LastOptimizerRun") == fakes::Number64(optimizer.now));
  CHECK(optimizer.Best0().empty());
  CHECK(threads.sleeps.empty());
}

TEST_CASE("with debug logging the first launch is logged, with type and argument swapped") {
  const Optimizer optimizer;
  DebugLogging = true;
  CHECK(optimizer.Launch() == Joined({Launched(1), {"0 Optimizer skipped\n"}}));
}

TEST_CASE("a run is due one second after the interval") {
  const Optimizer optimizer;
  SUBCASE("of thirty days") {}
  SUBCASE("of the setting") { optimizer.Set(L"OptimizerInterval", 30); }
  optimizer.SetLastRun(30 * kDay);
  CHECK(optimizer.Launch() == Launched(1));
  CHECK(optimizer.Best0().empty());
  optimizer.SetLastRun(30 * kDay + 1);
  CHECK(EndsRun(optimizer.Launch()));
  CHECK(optimizer.Best0() == "-1");
}

TEST_CASE("the interval is counted in 32 bits") {
  const Optimizer optimizer;
  optimizer.Set(L"OptimizerInterval", 49711);  // 63104 seconds, and 2 to the 32nd
  optimizer.SetLastRun(63104);
  CHECK(!EndsRun(optimizer.Launch()));
  optimizer.SetLastRun(63105);
  CHECK(EndsRun(optimizer.Launch()));
}

TEST_CASE("after the clock was set back no run is due") {
  const Optimizer optimizer;
  optimizer.SetLastRun(-kDay);
  optimizer.Set(L"OptimizerInterval", 0);
  CHECK(optimizer.Launch() == Launched(1));
  CHECK(optimizer.Stored(L"LastOptimizerRun") == fakes::Number64(optimizer.now + kDay));
}

TEST_CASE("on battery a due run is postponed as often as allowed and then runs") {
  const Optimizer optimizer;
  optimizer.MakeDue();
  optimizer.OnBattery(0, 2);
  const std::string postponed = "0 Optimizer thread run postponed as current power source is DC";
  for (uint32_t attempt = 1; attempt <= 2; ++attempt) {
    CHECK(optimizer.Launch().back() == postponed);
    CHECK(optimizer.Stored(L"CurrentOptimizerAttemptsInDCmode") == fakes::Number32(attempt));
    CHECK(optimizer.Best0().empty());
  }
  CHECK(EndsRun(optimizer.Launch()));
  CHECK(optimizer.Stored(L"CurrentOptimizerAttemptsInDCmode") == fakes::Number32(0));
  CHECK(optimizer.Best0() == "-1");
}

TEST_CASE("the attempts on battery are compared without a sign") {
  const Optimizer optimizer;
  optimizer.MakeDue();
  optimizer.OnBattery(0x7FFFFFFF, 0x80000000);
  CHECK(!EndsRun(optimizer.Launch()));
  CHECK(optimizer.Stored(L"CurrentOptimizerAttemptsInDCmode") == fakes::Number32(0x80000000));
}

TEST_CASE("on battery a due run never starts while a counter is undefined") {
  const Optimizer optimizer;
  optimizer.MakeDue();
  optimizer.OnBattery(5, 2);
  SUBCASE("the total") { settings.current.values.erase(L"TotalOptimizerAttemptsInDCmode"); }
  SUBCASE("the current") { settings.current.values.erase(L"CurrentOptimizerAttemptsInDCmode"); }
  for (int launch = 1; launch <= 2; ++launch) {
    CHECK(optimizer.Launch() ==
          Joined({Launched(launch),
                  {"0 TotalOptimizerAttemptsInDCmode or CurrentOptimizerAttemptsInDCmode value is  "
                   "not defined in registry..."}}));
  }
  CHECK(optimizer.Best0().empty());
}

TEST_CASE("a power source that cannot be read counts as battery, an unknown one as line power") {
  const Optimizer optimizer;
  optimizer.MakeDue();
  optimizer.OnBattery(0, 2);
  fakes::power.acLineStatus = kLineUnknown;
  SUBCASE("cannot be read") {
    fakes::power.failer.firstFailing = 1;
    CHECK(!EndsRun(optimizer.Launch()));
    CHECK(optimizer.Stored(L"CurrentOptimizerAttemptsInDCmode") == fakes::Number32(1));
  }
  SUBCASE("unknown") { CHECK(EndsRun(optimizer.Launch())); }
}

TEST_CASE("on line power a run ignores the counter and resets it") {
  const Optimizer optimizer;
  optimizer.MakeDue();
  optimizer.OnBattery(1, 5);
  fakes::power.acLineStatus = kLineOnline;
  CHECK(EndsRun(optimizer.Launch()));
  CHECK(optimizer.Stored(L"CurrentOptimizerAttemptsInDCmode") == fakes::Number32(0));
}

TEST_CASE("a run waits before it starts") {
  const Optimizer optimizer;
  optimizer.MakeDue();
  std::vector<uint32_t> milliseconds;
  SUBCASE("thirty minutes") { milliseconds = {1800000}; }
  SUBCASE("the minutes of the setting") {
    optimizer.Set(L"OptimizerDelay", 7);
    milliseconds = {420000};
  }
  SUBCASE("not at all") { optimizer.Set(L"OptimizerDelay", 0); }
  SUBCASE("not at all, when the seconds are negative in 32 bits") {
    optimizer.Set(L"OptimizerDelay", 0xFFFFFFFF);
  }
  SUBCASE("the milliseconds that 32 bits hold") {
    optimizer.Set(L"OptimizerDelay", 71583);  // 4294980000 milliseconds
    milliseconds = {12704};
  }
  CHECK(EndsRun(optimizer.Launch()));
  CHECK(threads.sleeps == milliseconds);
}

TEST_CASE("with debug logging the wait is logged, unless there is none") {
  const Optimizer optimizer;
  optimizer.MakeDue();
  DebugLogging = true;
  optimizer.Set(L"OptimizerDelay", 1);
  const Calls events = optimizer.Launch();
  REQUIRE(events.size() == 3);
  CHECK(events[1] == "4 Optimizer will sleep for 60 seconds\n");
  optimizer.MakeDue();
  optimizer.Set(L"OptimizerDelay", 0);
  CHECK(optimizer.Launch().size() == 2);
}

TEST_CASE("a run saves the recorded history, searches it, and stores when it was launched") {
  const Optimizer optimizer;
  optimizer.MakeDue();
  RecordFourSleeps();
  threads.whileSleeping = [] { fakes::clock.utcSeconds += 1800; };
  CHECK(EndsRun(optimizer.Launch()));
  CHECK(optimizer.Best0() == "10,20,70,90,60,2");
  CHECK(optimizer.Stored(L"LastOptimizerRun") == fakes::Number64(optimizer.now));
  CHECK(optimizer.Stored(L"CurrentOptimizerAttemptsInDCmode") == fakes::Number32(0));
}

TEST_CASE("history that is recorded during the wait is searched too") {
  const Optimizer optimizer;
  optimizer.MakeDue();
  threads.whileSleeping = [] { RecordFourSleeps(); };
  CHECK(EndsRun(optimizer.Launch()));
  CHECK(optimizer.Best0() == "10,20,70,90,60,2");
}

TEST_CASE("the controller's lock is free while a run waits and while it saves the history") {
  const Optimizer optimizer;
  optimizer.MakeDue();
  bool takenWhileSleeping = true;
  bool takenWhileSaving = false;
  int looks = 0;
  threads.whileSleeping = [&] {
    takenWhileSleeping = fakes::IsTaken(ControllerLock);
    const auto look = [&](const Lock& lock) {
      if (&lock == &ControllerLock) return;
      ++looks;
      takenWhileSaving = takenWhileSaving || fakes::IsTaken(ControllerLock);
    };
    fakes::locks.beforeTaking = look;
    // From here on the run only searches and posts.
    fakes::locks.afterFreeing = [look](const Lock& lock) {
      look(lock);
      if (&lock == &EngineLock) fakes::locks = {};
    };
  };
  CHECK(EndsRun(optimizer.Launch()));
  CHECK(!takenWhileSleeping);
  CHECK(looks >= 4);
  CHECK(!takenWhileSaving);
  CHECK(!threads.inBackground);
}

TEST_CASE("a launch and a request to end wait neither for an event nor for the history") {
  bool waited = false;
  const Optimizer optimizer;
  fakes::locks.beforeTaking = [&](const Lock& lock) {
    waited = waited || &lock == &ControllerLock || &lock == &EngineLock;
  };
  LaunchOptimizerThread();
  LaunchOptimizerThread();
  TerminateOptimizerThread();
  fakes::locks = {};
  CHECK(!waited);
  CHECK(OptimizerStopRequested);
}

TEST_CASE("a stop during the wait ends the run, which still counts as a run") {
  const Optimizer optimizer;
  optimizer.MakeDue();
  threads.whileSleeping = [] { TerminateOptimizerThread(); };
  const Calls events = optimizer.Launch();
  REQUIRE(events.size() == 3);
  CHECK(events[1] == "4 Terminate optimizer thread, 1\n");
  CHECK(EndsRun(events));
  CHECK(optimizer.Best0().empty());
  CHECK(!OptimizerStopRequested);
  CHECK(optimizer.Stored(L"LastOptimizerRun") == fakes::Number64(optimizer.now));
}

TEST_CASE("a stop while no thread runs does nothing") {
  const Optimizer optimizer;
  TerminateOptimizerThread();
  CHECK(optimizer.TakeEvents().empty());
  CHECK(!OptimizerStopRequested);
  optimizer.Launch();
  TerminateOptimizerThread();
  CHECK(optimizer.TakeEvents().empty());
  CHECK(!OptimizerStopRequested);
}

TEST_CASE(
    "only one thread lives at a time, and the next launch closes the handle of an ended one") {
  const Optimizer optimizer;
  fakes::TakeJournal();
  LaunchOptimizerThread();
  LaunchOptimizerThread();
  CHECK(threads.waiting.size() == 1);
  CHECK(optimizer.TakeEvents() ==
        Calls{"4 Launch optimizer thread, 1\n", "4 Optimizer thread still alive, 1\n"});
  threads.Run();
  LaunchOptimizerThread();
  CHECK(optimizer.TakeEvents() == Launched(2));
  Calls journal = fakes::TakeJournal();
  std::erase_if(journal, [](const std::string& call) { return !call.starts_with("thread: "); });
  CHECK(journal == Calls{"thread: start", "thread: close", "thread: start"});
}

TEST_CASE("when no thread could be started, the next launch tries again") {
  const Optimizer optimizer;
  threads.failer.firstFailing = 1;
  CHECK(optimizer.Launch() == Launched(0));
  CHECK(OptimizerThreadHandle == nullptr);
  TerminateOptimizerThread();
  CHECK(optimizer.TakeEvents().empty());
  CHECK(optimizer.Launch() == Launched(1));
  CHECK(optimizer.Stored(L"LastOptimizerRun").has_value());
}

TEST_CASE("with rates in force a run that is due saves the history and searches nothing") {
  const Optimizer optimizer;
  optimizer.MakeDue();
  RecordFourSleeps();
  RatesInForce = true;
  // A suspend during the wait asks the search to end.
  threads.whileSleeping = [] { TerminateOptimizerThread(); };
  CHECK(optimizer.Launch() == Joined({Launched(1), {"4 Terminate optimizer thread, 1\n"}}));
  CHECK(ReadWholeFile(optimizer.machine.HistoryFile())->size() > 0);
  CHECK(optimizer.Best0().empty());
  CHECK(optimizer.Stored(L"LastOptimizerRun") == fakes::Number64(optimizer.now));
  CHECK(optimizer.Stored(L"CurrentOptimizerAttemptsInDCmode") == fakes::Number32(0));

  // After a change back the next search is not cut short.
  RatesInForce = false;
  threads.whileSleeping = [] {};
  optimizer.MakeDue();
  CHECK(EndsRun(optimizer.Launch()));
  CHECK_FALSE(optimizer.Best0().empty());
}

TEST_CASE("an exception ends the thread, and the next launch tries the run again") {
  const Optimizer optimizer;
  optimizer.MakeDue();
  // No state has the code 7.
  const std::vector<HistoryRecord> records = {
      {1795000000, 0, 0}, {1795000600, 7, 0}, {1795001200, 0, 0}};
  REQUIRE(WriteWholeFile(optimizer.machine.HistoryFile(), records.data(),
                         records.size() * sizeof(HistoryRecord)));
  CHECK(optimizer.Launch() == Launched(1));
  DebugLogging = true;
  const Calls events = optimizer.Launch();
  CHECK(events ==
        Joined({Launched(2),
                {"4 Optimizer will sleep for 1800 seconds\n", "0 Optimizer exception\n"}}));
  CHECK(optimizer.Stored(L"LastOptimizerRun") == fakes::Number64(optimizer.now - 31 * kDay));
  CHECK(optimizer.Best0().empty());
}

}  // namespace dozewell
