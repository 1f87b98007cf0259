#include "optimizer/run_optimizer.h"

#include <doctest/doctest.h>

#include <chrono>
#include <cstdlib>
#include <string>
#include <vector>

#include "base/exception.h"
#include "base/file.h"
#include "base/lock.h"
#include "controller/state_machine/state_machine.h"
#include "fakes/event_log_fake.h"
#include "fakes/lock_fake.h"
#include "fakes/power_fake.h"
#include "fakes/settings_fake.h"
#include "optimizer/simulator/stop_request.h"
#include "prediction/configurations.h"
#include "support/sim_days.h"
#include "support/temp_folder.h"

namespace dozewell {
namespace {

using fakes::settings;
using Texts = std::vector<std::string>;

// Stands in for the controller's action and adds the parameter that the event names to the calls of
// the settings.
void NoteParameter(const SMEventData* event) {
  settings.calls.push_back("posted " + dynamic_cast<const ParamChangeEventData&>(*event).param);
}

// A machine on line power whose controller is active, with ranges for one set.
struct Machine {
  TempFolder folder;
  SleepStateMachine controller;

  Machine() {
    fakes::ResetSettings();
    fakes::eventLog = {};
    fakes::power = {};
    controller.current = SMState::Active;
    controller.AH_SetPredictorConfig = NoteParameter;
    StateMachine = &controller;
    SetRange("StrengthHighRange", "90");
    SetRange("StrengthLowRange", "60");
    SetRange("FirstLastWeightRange", "10");
    SetRange("SecondLastWeightRange", "20");
    SetRange("DayGroupingRange", "2");
    SetRange("WR", "50");
    // Three sleeps of 20 minutes.
    SetHistory({SimRecord(0, 0, 8), SimRecord(1, 0, 9), SimRecord(0, 0, 9, 20), SimRecord(1, 0, 10),
                SimRecord(0, 0, 10, 20), SimRecord(1, 0, 11), SimRecord(0, 0, 11, 20)});
  }
  ~Machine() { StateMachine = nullptr; }

  static void SetRange(const std::string& name, const std::string& text) {
    settings.current.predictorValues[{kPredictorSection, name}] = fakes::Text(text);
  }
  void SetHistory(const std::vector<HistoryRecord>& records) const {
    REQUIRE(WriteWholeFile(HistoryFile(), records.data(), records.size() * sizeof(HistoryRecord)));
  }
  std::wstring HistoryFile() const { return folder.File(L"zs7state.dat"); }

  // Runs and returns the calls that wrote or posted something.
  Texts Run() const {
    settings.calls.clear();
    RunOptimizer(HistoryFile());
    Texts results;
    for (const std::string& call : settings.calls) {
      if (!call.starts_with("Read")) results.push_back(call);
    }
    return results;
  }
};

const std::string kWrite = "WritePredictorValue CyclicProbabilityPredictor ";
const std::string kPosted = "posted Strength";

// Shows whether the fixed timeout hibernates any of the sleeps: the grid is empty and the weight
// counts only hibernation.
struct BaselineProbe : Machine {
  BaselineProbe() {
    SetRange("StrengthHighRange", "");
    SetRange("WR", "0");
  }
  bool Hibernates() const {
    const Texts results = Run();
    REQUIRE(results.size() == 2);
    if (results[0] == kWrite + "Best0 -1") return true;
    CHECK(results[0] == kWrite + "Best0 ,,,,,");
    return false;
  }
};

}  // namespace

TEST_CASE("a run stores the best sets and then posts the change") {
  Machine machine;
  // The fixed timeout of 10 minutes scores 25, sleep throughout 50.
  CHECK(machine.Run() == Texts{kWrite + "Best0 10,20,70,90,60,2", kPosted});
  Machine::SetRange("WR", "50, 0 100");
  CHECK(machine.Run() == Texts{kWrite + "Best0 10,20,70,90,60,2", kWrite + "Best1 -1",
                               kWrite + "Best2 10,20,70,90,60,2", kPosted});
}

TEST_CASE("without scoring weights nothing is stored, but the change is posted") {
  Machine machine;
  Machine::SetRange("WR", "");
  CHECK(machine.Run() == Texts{kPosted});
}

TEST_CASE("low thresholds above every high one store -1, or commas for a baseline of zero") {
  Machine machine;
  Machine::SetRange("StrengthLowRange", "91 99");
  CHECK(machine.Run() == Texts{kWrite + "Best0 -1", kPosted});
  fakes::power.values["balanced AC hibernate"] = 0;
  Machine::SetRange("WR", "0");
  CHECK(machine.Run() == Texts{kWrite + "Best0 ,,,,,", kPosted});
}

TEST_CASE("a missing, empty or short history stores -1 for every weight") {
  Machine machine;
  Machine::SetRange("WR", "0 100");
  const Texts none = {kWrite + "Best0 -1", kWrite + "Best1 -1", kPosted};
  machine.SetHistory({SimRecord(0, 0, 8), SimRecord(1, 0, 9)});
  CHECK(machine.Run() == none);
  machine.SetHistory({});
  CHECK(machine.Run() == none);
  REQUIRE(RemoveFile(machine.HistoryFile()));
  CHECK(machine.Run() == none);
}

TEST_CASE("the history is read under the engine's lock, which is free again for the search") {
  Machine machine;
  const std::vector<unsigned char> history = ReadWholeFile(machine.HistoryFile()).value();
  machine.SetHistory({});
  fakes::locks.beforeTaking = [&](const Lock& lock) {
    if (&lock != &EngineLock) return;
    REQUIRE(WriteWholeFile(machine.HistoryFile(), history.data(), history.size()));
  };
  fakes::locks.afterFreeing = [&](const Lock& lock) {
    if (&lock == &EngineLock) machine.SetHistory({});
  };
  CHECK(machine.Run() == Texts{kWrite + "Best0 10,20,70,90,60,2", kPosted});
  CHECK(ReadWholeFile(machine.HistoryFile()).value().empty());
  fakes::ResetLocks();
}

TEST_CASE("only whole records with increasing times count") {
  Machine machine;
  // Only two records are left without those out of order, which is one too few.
  machine.SetHistory(
      {SimRecord(0, 0, 8), SimRecord(1, 0, 8), SimRecord(1, 0, 7), SimRecord(1, 0, 9)});
  CHECK(machine.Run() == Texts{kWrite + "Best0 -1", kPosted});
  const std::vector<HistoryRecord> three = {SimRecord(0, 0, 8), SimRecord(1, 0, 9),
                                            SimRecord(0, 0, 10)};
  machine.SetHistory(three);
  CHECK(machine.Run() == Texts{kWrite + "Best0 10,20,70,90,60,2", kPosted});
  REQUIRE(WriteWholeFile(machine.HistoryFile(), three.data(), 47));
  CHECK(machine.Run() == Texts{kWrite + "Best0 -1", kPosted});
}

TEST_CASE("the fixed timeout is the active scheme's for the power source in use") {
  BaselineProbe probe;
  fakes::power.values["balanced AC hibernate"] = 1199;
  fakes::power.values["balanced DC hibernate"] = 1200;
  CHECK(probe.Hibernates());
  CHECK(fakes::power.calls == Texts{"power source", "get active", "read balanced AC hibernate"});
  fakes::power.acLineStatus = kLineUnknown;
  CHECK(probe.Hibernates());
  fakes::power.acLineStatus = kLineOffline;
  CHECK_FALSE(probe.Hibernates());
  fakes::power.values["balanced DC hibernate"] = 0;
  CHECK_FALSE(probe.Hibernates());
}

TEST_CASE("where the timeout cannot be read it is 10 minutes") {
  BaselineProbe probe;
  CHECK(probe.Hibernates());
  fakes::power.values["balanced AC hibernate"] = 3600;
  CHECK_FALSE(probe.Hibernates());
  for (int failing = 1; failing <= 3; ++failing) {
    fakes::power.failer = {failing, 1, 0};
    CHECK(probe.Hibernates());
  }
  // A timeout hibernates sleeps that last longer.
  fakes::power.values.clear();
  fakes::power.failer = {};
  probe.SetHistory({SimRecord(0, 0, 8), SimRecord(1, 0, 9), SimRecord(0, 0, 9, 10)});
  CHECK_FALSE(probe.Hibernates());
  probe.SetHistory({SimRecord(0, 0, 8), SimRecord(1, 0, 9), SimRecord(0, 0, 9, 10, 1)});
  CHECK(probe.Hibernates());
}

TEST_CASE("after a stop request nothing is stored or posted, and the request is cleared") {
  Machine machine;
  OptimizerStopRequested = true;
  CHECK(machine.Run().empty());
  CHECK_FALSE(OptimizerStopRequested);
  CHECK(fakes::eventLog.After("report 4 Optimizer runtime ").size() == 1);
  CHECK(machine.Run() == Texts{kWrite + "Best0 10,20,70,90,60,2", kPosted});
}

TEST_CASE("a run says how many milliseconds it took") {
  using std::chrono::duration_cast, std::chrono::milliseconds, std::chrono::steady_clock;
  Machine machine;
  // Long enough to be measured: a code that the service does not write makes the sets be simulated
  // one by one.
  std::string groupings;
  for (int i = 0; i < 3000; ++i) groupings += "2 ";
  Machine::SetRange("DayGroupingRange", groupings);
  machine.SetHistory({SimRecord(0, 0, 8), SimRecord(3, 0, 9), SimRecord(0, 0, 10)});
  const auto start = steady_clock::now();
  machine.Run();
  const auto most = duration_cast<milliseconds>(steady_clock::now() - start).count();
  const Texts runtimes = fakes::eventLog.After("report 4 Optimizer runtime ");
  REQUIRE(runtimes.size() == 1);
  char* end = nullptr;
  const long logged = std::strtol(runtimes[0].c_str(), &end, 10);
  CHECK(std::string(end) == "\n");
  CHECK(logged > 0);
  CHECK(logged <= most);
}

TEST_CASE("an exception of a simulation goes to the caller, and nothing is cleared or logged") {
  Machine machine;
  machine.SetHistory({SimRecord(0, 0, 8), SimRecord(4, 0, 9), SimRecord(0, 0, 10)});
  CHECK_THROWS_WITH_AS(machine.Run(), "Unknown event in the history", FixedTextException);
  CHECK(fakes::eventLog.calls.empty());
  machine.SetHistory({SimRecord(0, 0, 8), SimRecord(1, 0, 9), SimRecord(0, 0, 10)});
  Machine::SetRange("FirstLastWeightRange", "-1");
  CHECK_THROWS_WITH_AS(machine.Run(), "No weigths specified", FixedTextException);
  CHECK(fakes::eventLog.calls.empty());
}

TEST_CASE("when a value cannot be stored, the others still are") {
  Machine machine;
  Machine::SetRange("WR", "50 100");
  settings.failer.firstFailing = 7;  // after the six lists
  CHECK(machine.Run() ==
        Texts{kWrite + "Best0 10,20,70,90,60,2", kWrite + "Best1 10,20,70,90,60,2", kPosted});
}

}  // namespace dozewell
