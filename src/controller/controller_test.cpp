#include "controller/controller.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <exception>
#include <functional>
#include <iterator>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "base/exception.h"
#include "base/file.h"
#include "base/process_flags.h"
#include "controller/actions.h"
#include "controller/engine.h"
#include "controller/guards.h"
#include "controller/state_machine/state_machine.h"
#include "diagnostics/event_writer.h"
#include "fakes/clock_fake.h"
#include "fakes/journal.h"
#include "fakes/lock_fake.h"
#include "fakes/machine.h"
#include "fakes/settings_fake.h"
#include "optimizer/simulator/stop_request.h"
#include "prediction/cyclic_probability_predictor.h"
#include "support/calls.h"
#include "support/local_times.h"

namespace dozewell {
namespace {

const Calls kBuilt = {"settings: GetDataFolder", "settings: ReadSetting TimeResolution",
                      "settings: ReadSetting TimeResolution"};

// The calls of the first event, on a machine whose timeouts are the user's own.
const Calls kActivated = {
    "trace State Machine event: ",
    "trace 21/11/2026 8:5:9 - Activating",
    "trace \n",
    "report 4 21/11/2026 8:5:9 - Activating",
    "trace AH_LogEvent\n",
    "trace AH_RecordHistoryEvent\n",
    "trace AH_RestoreHA\n",
    "settings: ReadSetting HA_AC delete",
    "settings: ReadSetting HA_DC delete",
    "trace AH_CancelHWTimer\n",
    "trace State Machine new state: ",
    "trace Active",
    "trace \n",
    "report 4 Active",
};

Calls Start() {
  fakes::TakeJournal();
  StartController();
  return fakes::TakeJournal();
}

void CheckNothingIsLeft() {
  CHECK_FALSE(ControllerStarted);
  CHECK(StateMachine == nullptr);
  CHECK(engine.configurations == nullptr);
  CHECK(engine.historian == nullptr);
  CHECK(engine.predictor == nullptr);
  CHECK_FALSE(engine.nextSleepTime.has_value());
}

// Has a controller of this machine save its data, and changes the version in the file.
void WriteDataOfVersion1(const fakes::Machine& machine) {
  StartController();
  PostEvent(std::make_unique<SMEventData>(SMEvent::Uninitializing));
  StopController();
  auto bytes = ReadWholeFile(machine.DataFile()).value();
  bytes[0] = 1;
  REQUIRE(WriteWholeFile(machine.DataFile(), bytes.data(), bytes.size()));
}

// Throws an unknown exception from each call that the actions make.
struct Thrower : ITimeLineListener, IConfigurationsListener, IPredictor {
  void OnTimeLineEvent(const TimeLineEvent&) override { throw 42; }
  void OnConfigurationChanged(std::string) override { throw 42; }
  std::vector<PredictionRecord> GetPredictions(const tm&) override { throw 42; }
  std::vector<PredictionRecord> PredictHibernate(const tm&) override { return {}; }
  std::vector<PredictionRecord> PredictWake(const tm&) override { return {}; }
  float GetSlotProbability(int) override { return -1; }
};

}  // namespace

TEST_CASE("a start builds the engine, posts the first Activating and notes the time") {
  const fakes::Machine machine;
  CHECK(Start() == Joined({kBuilt, kActivated}));
  CHECK(ControllerStarted);
  CHECK(StateMachine->current == SMState::Active);
  CHECK(LastSaveTime == LocalTime(2026, 11, 21, 8, 5, 9));
  CHECK(engine.configurations != nullptr);
  CHECK(engine.historian->HasListener());
  CHECK(dynamic_cast<CyclicProbabilityPredictor*>(engine.predictor.get()) != nullptr);
}

TEST_CASE("a start fills the machine's slots with the handlers of their names") {
  const fakes::Machine machine;
  StartController();
  const SleepStateMachine& slots = *StateMachine;
  using SlotAction = SleepStateMachine::Action;
  CHECK((slots.ReportStateMachineError == &ReportStateMachineError));
  CHECK((slots.GImpl_GoingToS3 == &GImpl_GoingToS3));
  CHECK((slots.GImpl_GoingToS4 == &GImpl_GoingToS4));
  CHECK((slots.GImpl_RealActivate == &GImpl_RealActivate));
  CHECK((slots.AH_LogEvent == &AH_LogEvent));
  CHECK((slots.AH_TimeStampEvent == &AH_TimeStampEvent));
  CHECK((slots.AH_SetPredictedSettings == &AH_SetPredictedSettings));
  CHECK((slots.AH_RetryPredictedHWTimer == &AH_RetryPredictedHWTimer));
  CHECK((slots.AH_SetNextPredictedHA == &AH_SetNextPredictedHA));
  CHECK((slots.AH_RestoreHA == &AH_RestoreHA));
  CHECK((slots.AH_CancelHWTimer == &AH_CancelHWTimer));
  CHECK((slots.AH_ProgramSleep == &AH_ProgramSleep));
  CHECK((slots.AH_PredictorContainerOff == &AH_PredictorContainerOff));
  CHECK((slots.AH_SetPredictorConfig == &AH_SetPredictorConfig));
  CHECK((slots.AH_SavePredictionData == &AH_SavePredictionData));
  CHECK((slots.AH_RecordHistoryEvent == static_cast<SlotAction>(&AH_RecordHistoryEvent)));
  CHECK((slots.AH_SaveHistory == static_cast<SlotAction>(&AH_SaveHistory)));
  CHECK((slots.AH_ResetHistory == &AH_ResetHistory));
  fakes::TakeJournal();
  slots.LaunchOptimizerThread(nullptr);
  CHECK(fakes::TakeJournal() == Calls{"thread: start", "report 4 Launch optimizer thread, 1\n"});
  CHECK_FALSE(OptimizerStopRequested);
  slots.TerminateOptimizerThread(nullptr);
  CHECK(fakes::TakeJournal() == Calls{"report 4 Terminate optimizer thread, 1\n"});
  CHECK(OptimizerStopRequested);
}

TEST_CASE("a start's first event runs under both locks, later ones under the controller's alone") {
  struct Locks {
    bool controller;
    bool engine;
  };
  static std::vector<Locks> seen;
  seen.clear();
  const fakes::Machine machine;
  StateMachine = new SleepStateMachine;
  StateMachine->AH_RecordHistoryEvent = [](const SMEventData*) {
    seen.push_back({fakes::IsTaken(ControllerLock), fakes::IsTaken(EngineLock)});
  };
  StartController();
  CHECK_FALSE(fakes::IsTaken(ControllerLock));
  CHECK_FALSE(fakes::IsTaken(EngineLock));
  PostEvent(std::make_unique<SMEventData>(SMEvent::Suspend));
  CHECK_FALSE(fakes::IsTaken(ControllerLock));
  REQUIRE(seen.size() == 2);
  CHECK(seen[0].controller);
  CHECK(seen[0].engine);
  CHECK(seen[1].controller);
  CHECK_FALSE(seen[1].engine);
}

TEST_CASE("an engine is deleted under the controller's lock") {
  // Notes whether it is deleted under the controller's lock.
  struct Mortal : Thrower {
    bool* underLock;
    explicit Mortal(bool* noted) : underLock(noted) {}
    ~Mortal() override { *underLock = fakes::IsTaken(ControllerLock); }
  };
  const fakes::Machine machine;
  bool stopped = false;
  bool started = false;
  StartController();
  engine.predictor = std::make_unique<Mortal>(&stopped);
  StopController();
  engine.configurations = std::make_unique<ConfigurationsImpl>();
  engine.historian = std::make_unique<HistorianImpl>();
  engine.predictor = std::make_unique<Mortal>(&started);
  StartController();
  CHECK(stopped);
  CHECK(started);
  CHECK_FALSE(fakes::IsTaken(ControllerLock));
}

// Notes in the journal when the two locks are taken and freed.
void NoteLocks() {
  const auto note = [](const char* text, const Lock& lock) {
    if (&lock == &ControllerLock) fakes::journal.push_back(std::string(text) + " controller");
    if (&lock == &EngineLock) fakes::journal.push_back(std::string(text) + " engine");
  };
  fakes::locks.beforeTaking = [note](const Lock& lock) { note("take", lock); };
  fakes::locks.afterFreeing = [note](const Lock& lock) { note("free", lock); };
}

TEST_CASE("an engine is built without the controller's lock, and comes to life under both") {
  const fakes::Machine machine;
  NoteLocks();
  const Calls calls = Start();
  const Calls before =
      Joined({{"take controller", "free controller"}, kBuilt, {"take controller"}});
  REQUIRE(calls.size() > before.size());
  CHECK(Calls(calls.begin(), calls.begin() + std::ssize(before)) == before);
  CHECK(std::ranges::count(calls, "free engine") == 1);
  CHECK(std::find(calls.begin(), calls.end(), "report 4 Active") <
        std::find(calls.begin(), calls.end(), "free engine"));
}

TEST_CASE("a start that finds the history's file being worked on waits without any event's lock") {
  const fakes::Machine machine;
  int tries = 0;
  fakes::locks.isBusy = [&](const Lock& lock) { return &lock == &EngineLock && ++tries == 1; };
  bool waited = false;
  fakes::locks.beforeTaking = [&](const Lock& lock) {
    if (&lock != &EngineLock || waited) return;
    waited = true;
    CHECK_FALSE(fakes::IsTaken(ControllerLock));
  };
  CHECK(Start() == Joined({kBuilt, kActivated}));
  CHECK(waited);
  CHECK(ControllerStarted);
}

TEST_CASE("a second start does nothing") {
  const fakes::Machine machine;
  StartController();
  const IPredictor* const predictor = engine.predictor.get();
  fakes::SetTime(LocalTime(2026, 11, 22));
  CHECK(Start() == Calls{});
  CHECK(engine.predictor.get() == predictor);
  CHECK(LastSaveTime == LocalTime(2026, 11, 21, 8, 5, 9));
}

TEST_CASE("a start restores timeouts that were left in the cache") {
  const fakes::Machine machine;
  fakes::settings.current.values[L"HA_DC"] = fakes::Number32(15);
  Calls activated = kActivated;
  const Calls restored = {"power: get active", "power: write balanced DC hibernate 900",
                          "power: activate balanced"};
  activated.insert(activated.begin() + 9, restored.begin(), restored.end());
  CHECK(Start() == Joined({kBuilt, activated}));
}

TEST_CASE("a start goes on with what was learnt before") {
  const fakes::Machine machine;
  StartController();
  PostEvent(std::make_unique<SMEventData>(SMEvent::Uninitializing));
  StopController();
  StartController();
  CHECK(dynamic_cast<CyclicProbabilityPredictor&>(*engine.predictor).LoadState() ==
        DataFileState::Loaded);
}

TEST_CASE("a stop takes everything down and saves and logs nothing") {
  const fakes::Machine machine;
  StartController();
  engine.nextSleepTime = LocalTime(2026, 11, 22);
  engine.nextHAMinutes = 7;
  fakes::TakeJournal();
  StopController();
  CHECK(fakes::TakeJournal() == Calls{});
  CheckNothingIsLeft();
  CHECK(engine.nextHAMinutes == 7);
  CHECK(machine.HasNoFiles());
}

TEST_CASE("a stop without a start does no harm and forgets the next sleep time") {
  const fakes::Machine machine;
  engine.nextSleepTime = LocalTime(2026, 11, 22);
  StopController();
  CheckNothingIsLeft();
  StopController();
  CheckNothingIsLeft();
}

TEST_CASE("a stop leaves the machine of a start that failed") {
  const fakes::Machine machine;
  StateMachine = new SleepStateMachine;
  StateMachine->AH_RestoreHA = [](const SMEventData*) { throw 42; };
  CHECK_THROWS_AS(StartController(), int);
  const SleepStateMachine* const left = StateMachine;
  StopController();
  CHECK(StateMachine == left);
  CHECK(engine.predictor == nullptr);
}

TEST_CASE("a start after a stop begins anew, whatever the state was") {
  for (const SMState state : {SMState::Suspended, SMState::Spike_S3ToS4, SMState::Off}) {
    const fakes::Machine machine;
    StartController();
    StateMachine->current = state;
    StopController();
    CHECK(Start() == Joined({kBuilt, kActivated}));
  }
}

TEST_CASE("events recorded before a stop are saved after the next start") {
  const fakes::Machine machine;
  StartController();
  StopController();
  fakes::SetTime(LocalTime(2026, 11, 21, 9));
  StartController();
  AH_SaveHistory(nullptr);
  CHECK(ReadWholeFile(machine.HistoryFile()).value().size() == 32);
}

TEST_CASE("a start that cannot build the engine leaves nothing, and a later one does") {
  struct Row {
    const char* name;
    std::function<void(const fakes::Machine&)> breakIt;
    const char* message;
  };
  const Row rows[] = {
      {"no values", [](const fakes::Machine&) { fakes::settings.defaults.predictorValues.clear(); },
       "No weigths specified"},
      {"no cycle",
       [](const fakes::Machine&) {
         fakes::settings.defaults.predictorValues[{"CyclicProbabilityPredictor", "DaysInCycle"}] =
             fakes::Text("0");
       },
       "CyclicProbabilityPredictor::LoadDataIfExists - wrong configurations"},
      {"no folder", [](const fakes::Machine&) { fakes::settings.dataFolder.clear(); },
       "invalid string position"},
      {"a data file of another version", WriteDataOfVersion1, "Version 0 expected"},
  };
  for (const Row& row : rows) {
    CAPTURE(row.name);
    const fakes::Machine machine;
    const auto defaults = fakes::settings.defaults;
    const std::wstring folder = fakes::settings.dataFolder;
    row.breakIt(machine);
    LastSaveTime = {};
    fakes::TakeJournal();
    CHECK_THROWS_WITH_AS(StartController(), row.message, std::exception);
    for (const std::string& call : fakes::TakeJournal()) CHECK(call.starts_with("settings: "));
    CheckNothingIsLeft();
    CHECK(LastSaveTime == tm{});

    fakes::settings.defaults = defaults;
    fakes::settings.dataFolder = folder;
    RemoveFile(machine.DataFile());
    StartController();
    CHECK(ControllerStarted);
    CHECK(StateMachine->current == SMState::Active);
  }
}

TEST_CASE("a data file of the right size whose first word is 1 fails a start with its message") {
  const fakes::Machine machine;
  std::vector<unsigned char> bytes(16192);
  bytes[0] = 1;
  const int32_t header[] = {1, 7, 1440, 15};
  std::memcpy(bytes.data(), header, sizeof(header));
  const int32_t slotCount = 672;
  std::memcpy(bytes.data() + 56, &slotCount, sizeof(slotCount));
  REQUIRE(WriteWholeFile(machine.DataFile(), bytes.data(), bytes.size()));
  CHECK_THROWS_WITH_AS(StartController(), "Version 0 expected", FixedTextException);
  // The file is kept for a version that can read it.
  CHECK(ReadWholeFile(machine.DataFile()).value() == bytes);
}

TEST_CASE(
    "an exception of the first event's actions reaches the caller, and the controller is off") {
  const fakes::Machine machine;
  StateMachine = new SleepStateMachine;
  StateMachine->AH_RestoreHA = [](const SMEventData*) { throw 42; };
  CHECK_THROWS_AS(StartController(), int);
  CHECK_FALSE(ControllerStarted);
  CHECK(StateMachine->current == SMState::Uninitialized);
  // What was left behind does not prevent a later start.
  StateMachine->AH_RestoreHA = nullptr;
  StartController();
  CHECK(ControllerStarted);
  CHECK(engine.historian->HasListener());
}

TEST_CASE("an unknown exception reaches the poster, and the state stays") {
  struct Row {
    const char* name;
    SMEvent event;
    const char* report;
  };
  const Row rows[] = {
      {"predictor", SMEvent::Suspend,
       "AH_SetPredictedSettings: PredictorObj::GetPredictions threw an unknown exception"},
      {"historian", SMEvent::Suspend,
       "AH_LogEvent: HistorianObj::NotifyListener threw an unknown exception"},
      {"historian", SMEvent::ShuttingDown,
       "AH_LogEvent: HistorianObj::NotifyListener threw an unknown exception"},
      {"historian", SMEvent::Uninitializing,
       "AH_PredictorContainerOff: HistorianObj::NotifyListener threw an unknown exception"},
      {"historian", SMEvent::Saving,
       "AH_SavePredictionData: HistorianObj::NotifyListener threw an unknown exception"},
      {"configurations", SMEvent::ParamChanging,
       "AH_SetPredictorConfig: ConfigObj::NotifyListener threw an unknown exception"},
  };
  for (const Row& row : rows) {
    CAPTURE(row.report);
    const fakes::Machine machine;
    Thrower thrower;
    StartController();
    const std::string name = row.name;
    if (name == "predictor") engine.predictor = std::make_unique<Thrower>();
    if (name == "historian") engine.historian->RegisterListener(&thrower);
    if (name == "configurations") engine.configurations->RegisterListener(&thrower);
    fakes::TakeJournal();
    if (row.event == SMEvent::ParamChanging) {
      CHECK_THROWS_AS(PostEvent(std::make_unique<ParamChangeEventData>("Strength")), int);
    } else {
      CHECK_THROWS_AS(PostEvent(std::make_unique<SMEventData>(row.event)), int);
    }
    const Calls calls = fakes::TakeJournal();
    CHECK(Calls(calls.end() - 2, calls.end()) ==
          Calls{std::string("report 1 ") + row.report, std::string("trace ") + row.report});
    CHECK(StateMachine->current == SMState::Active);
    // The controller still takes events.
    PostEvent(std::make_unique<SMEventData>(SMEvent::ResetHistory));
    CHECK(engine.historian->HasListener());
  }
}

TEST_CASE("a start while the clock cannot be read leaves the time of the last save") {
  const fakes::Machine machine;
  LastSaveTime = LocalTime(2026, 11, 20);
  fakes::clock.utcSeconds = -1;
  StartController();
  CHECK(LastSaveTime == LocalTime(2026, 11, 20));
}

}  // namespace dozewell
