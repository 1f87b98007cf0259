#include "controller/state_machine/state_machine.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "base/lock.h"
#include "base/utf8.h"
#include "diagnostics/event_writer.h"
#include "fakes/clock_fake.h"
#include "fakes/event_log_fake.h"
#include "fakes/lock_fake.h"
#include "support/local_times.h"

namespace dozewell {
namespace {

using Names = std::vector<std::string>;
using Machine = SleepStateMachine;

// A handler's name as a template argument.
struct Name {
  char text[32] = {};
  template <size_t kSize>
  consteval Name(const char (&name)[kSize]) {  // NOLINT(google-explicit-constructor)
    std::copy_n(name, kSize, text);
  }
};

// The event that handlers expect, and the guards that answer true. Handlers write their names among
// the calls of the event log, so that a test sees everything in one sequence.
const SMEventData* posted = nullptr;
std::set<std::string> trueGuards;

template <Name kName>
void Act(const SMEventData* event) {
  CHECK(event == posted);
  fakes::eventLog.calls.emplace_back(kName.text);
}

template <Name kName>
bool Ask(const SMEventData* event) {
  Act<kName>(event);
  return trueGuards.contains(kName.text);
}

void Throw(const SMEventData*) { throw std::runtime_error("thrown by an action"); }

bool ThrowingGuard(const SMEventData*) { throw std::runtime_error("thrown by a guard"); }

// Notes when it is deleted.
struct WatchedEvent : SMEventData {
  explicit WatchedEvent(SMEvent eventId) : SMEventData(eventId) {}
  ~WatchedEvent() override { fakes::eventLog.calls.emplace_back("event deleted"); }
};

// A started controller whose handlers only note that they ran, on 2026-11-21 at 8:05:09.
struct Controller {
  Machine machine;

  explicit Controller(SMState state = SMState::Uninitialized) {
    fakes::clock = {1, LocalTime(2026, 11, 21, 8, 5, 9)};
    fakes::eventLog = {};
    trueGuards.clear();
    machine.ReportStateMachineError = ReportStateMachineError;
    machine.GImpl_GoingToS3 = Ask<"GImpl_GoingToS3">;
    machine.GImpl_GoingToS4 = Ask<"GImpl_GoingToS4">;
    machine.GImpl_RealActivate = Ask<"GImpl_RealActivate">;
    machine.AH_LogEvent = Act<"AH_LogEvent">;
    machine.AH_TimeStampEvent = Act<"AH_TimeStampEvent">;
    machine.AH_SetPredictedSettings = Act<"AH_SetPredictedSettings">;
    machine.AH_RetryPredictedHWTimer = Act<"AH_RetryPredictedHWTimer">;
    machine.AH_SetNextPredictedHA = Act<"AH_SetNextPredictedHA">;
    machine.AH_RestoreHA = Act<"AH_RestoreHA">;
    machine.AH_CancelHWTimer = Act<"AH_CancelHWTimer">;
    machine.AH_ProgramSleep = Act<"AH_ProgramSleep">;
    machine.AH_PredictorContainerOff = Act<"AH_PredictorContainerOff">;
    machine.AH_SetPredictorConfig = Act<"AH_SetPredictorConfig">;
    machine.AH_SavePredictionData = Act<"AH_SavePredictionData">;
    machine.AH_RecordHistoryEvent = Act<"AH_RecordHistoryEvent">;
    machine.AH_SaveHistory = Act<"AH_SaveHistory">;
    machine.LaunchOptimizerThread = Act<"LaunchOptimizerThread">;
    machine.TerminateOptimizerThread = Act<"TerminateOptimizerThread">;
    machine.AH_ResetHistory = Act<"AH_ResetHistory">;
    machine.current = state;
    StateMachine = &machine;
  }
  ~Controller() { StateMachine = nullptr; }
  Controller(const Controller&) = delete;
  Controller& operator=(const Controller&) = delete;

  // All calls that an event led to.
  Names Post(SMEvent event) {
    fakes::eventLog.calls.clear();
    auto owned = std::make_unique<WatchedEvent>(event);
    posted = owned.get();
    PostEvent(std::move(owned));
    return std::exchange(fakes::eventLog.calls, {});
  }
};

// The calls that write one event to the event log.
Names Reported(const std::string& type, const std::string& text) {
  return {"open Dozewell Service", "report " + type + " " + text, "close"};
}

Names Information(const std::string& label, const std::string& text) {
  Names calls = {"trace " + label, "trace " + text, "trace \n"};
  for (const std::string& call : Reported("4", text)) calls.push_back(call);
  return calls;
}

Names Error(const std::string& text) {
  Names calls = Reported("1", text);
  calls.push_back("trace " + text);
  return calls;
}

Names EventArrived(const std::string& event) {
  return Information("State Machine event: ", "21/11/2026 8:5:9 - " + event);
}

Names StateEntered(const std::string& state) {
  return Information("State Machine new state: ", state);
}

Names UndefinedEvent(const std::string& state, const std::string& event) {
  return Error("State Machine Error: State: " + state + ", Undefined event: 21/11/2026 8:5:9 - " +
               event);
}

Names InOrder(const std::vector<Names>& parts) {
  Names all;
  for (const Names& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

const Names kDeleted = {"event deleted"};

struct NamedState {
  SMState state;
  int32_t value;
  const char* name;
};
const NamedState kNamedStates[] = {
    {SMState::Uninitialized, -1, "Uninitialized"}, {SMState::Active, 0, "Active"},
    {SMState::Spike_S3ToS4, 1, "Spike_S3ToS4"},    {SMState::Spike_S4ToS3, 2, "Spike_S4ToS3"},
    {SMState::Suspended, 3, "Suspended"},          {SMState::Off, 4, "Off"},
};
const Names kEventNames = {"Activating",     "Suspend", "ShuttingDown", "ParamChanging",
                           "Uninitializing", "Saving",  "ResetHistory"};
const Names kGuards = {"GImpl_GoingToS3", "GImpl_GoingToS4", "GImpl_RealActivate"};

struct TableRow {
  std::string state;
  std::string event;
  std::string guard;  // empty for none
  Names actions;
  std::string nextState;
};
const TableRow kTable[] = {
    {"Uninitialized",
     "Activating",
     "",
     {"AH_LogEvent", "AH_RecordHistoryEvent", "AH_RestoreHA", "AH_CancelHWTimer"},
     "Active"},
    {"Active",
     "Suspend",
     "",
     {"TerminateOptimizerThread", "AH_RecordHistoryEvent", "AH_TimeStampEvent",
      "AH_SetPredictedSettings", "AH_LogEvent"},
     "Suspended"},
    {"Active",
     "ShuttingDown",
     "",
     {"TerminateOptimizerThread", "AH_RecordHistoryEvent", "AH_SaveHistory", "AH_LogEvent",
      "AH_PredictorContainerOff"},
     "Off"},
    {"Active",
     "Uninitializing",
     "",
     {"TerminateOptimizerThread", "AH_RecordHistoryEvent", "AH_SaveHistory",
      "AH_PredictorContainerOff"},
     "Uninitialized"},
    {"Active", "ParamChanging", "", {"AH_SetPredictorConfig"}, "Active"},
    {"Active", "Saving", "", {"AH_SavePredictionData"}, "Active"},
    {"Active", "ResetHistory", "", {"AH_ResetHistory"}, "Active"},
    {"Suspended",
     "Activating",
     "GImpl_GoingToS3",
     {"AH_SetNextPredictedHA", "AH_ProgramSleep"},
     "Spike_S4ToS3"},
    {"Suspended", "Activating", "GImpl_GoingToS4", {}, "Spike_S3ToS4"},
    {"Suspended",
     "Activating",
     "GImpl_RealActivate",
     {"AH_RecordHistoryEvent", "AH_LogEvent", "AH_RestoreHA", "AH_CancelHWTimer",
      "LaunchOptimizerThread"},
     "Active"},
    {"Spike_S3ToS4", "Suspend", "", {"AH_TimeStampEvent", "AH_RetryPredictedHWTimer"}, "Suspended"},
    {"Spike_S3ToS4",
     "ShuttingDown",
     "",
     {"AH_RecordHistoryEvent", "AH_LogEvent", "AH_PredictorContainerOff", "AH_SaveHistory"},
     "Off"},
    {"Spike_S3ToS4",
     "Activating",
     "",
     {"AH_RecordHistoryEvent", "AH_LogEvent", "AH_RestoreHA", "AH_CancelHWTimer",
      "LaunchOptimizerThread"},
     "Active"},
    {"Spike_S4ToS3", "Suspend", "", {"AH_TimeStampEvent"}, "Suspended"},
    {"Spike_S4ToS3",
     "ShuttingDown",
     "",
     {"AH_RecordHistoryEvent", "AH_LogEvent", "AH_PredictorContainerOff", "AH_SaveHistory"},
     "Off"},
    {"Spike_S4ToS3",
     "Activating",
     "",
     {"AH_RecordHistoryEvent", "AH_LogEvent", "AH_RestoreHA", "AH_CancelHWTimer",
      "LaunchOptimizerThread"},
     "Active"},
};

struct Outcome {
  Names calls;
  std::string nextState;
};

// The calls that the rows ask for on an event while some guards are true.
Outcome Expected(const std::string& state, const std::string& event,
                 const std::set<std::string>& guards) {
  Outcome outcome{EventArrived(event), state};
  Names& calls = outcome.calls;
  bool defined = false;
  for (const TableRow& row : kTable) {
    if (row.state != state || row.event != event) continue;
    defined = true;
    if (!row.guard.empty()) calls.push_back(row.guard);
    if (!row.guard.empty() && !guards.contains(row.guard)) continue;
    const Names entered = row.nextState != state ? StateEntered(row.nextState) : Names{};
    outcome.nextState = row.nextState;
    calls = InOrder({calls, row.actions, entered});
    break;
  }
  const Names undefined = defined ? Names{} : UndefinedEvent(state, event);
  calls = InOrder({calls, undefined, kDeleted});
  return outcome;
}

}  // namespace

TEST_CASE("states and events have their values and names") {
  for (const NamedState& state : kNamedStates) {
    CHECK(static_cast<int32_t>(state.state) == state.value);
    CHECK(NarrowToUtf8(SMStateName(state.state)) == state.name);
  }
  for (uint32_t event = 0; event < kEventNames.size(); ++event) {
    CHECK(NarrowToUtf8(SMEventName(static_cast<SMEvent>(event))) == kEventNames[event]);
  }
}

TEST_CASE("values without a name are UNKNOWN") {
  for (const int32_t value : {-2, 5, 0x7FFFFFFF}) {
    CHECK(NarrowToUtf8(SMStateName(static_cast<SMState>(value))) == "UNKNOWN");
  }
  for (const uint32_t value : {7U, 0xFFFFFFFFU}) {
    CHECK(NarrowToUtf8(SMEventName(static_cast<SMEvent>(value))) == "UNKNOWN");
  }
}

TEST_CASE("a new machine is Uninitialized") { CHECK(Machine().current == SMState::Uninitialized); }

TEST_CASE("a machine without any handler moves along the rows that have no guard") {
  for (const NamedState& state : kNamedStates) {
    for (uint32_t event = 0; event < kEventNames.size(); ++event) {
      Controller controller;
      Machine empty;
      empty.current = state.state;
      StateMachine = &empty;
      std::string nextState = state.name;
      for (const TableRow& row : kTable) {
        if (row.state == state.name && row.event == kEventNames[event] && row.guard.empty()) {
          nextState = row.nextState;
        }
      }
      const Names entered = nextState != state.name ? StateEntered(nextState) : Names{};
      CAPTURE(state.name);
      CAPTURE(kEventNames[event]);
      CHECK(controller.Post(static_cast<SMEvent>(event)) ==
            InOrder({EventArrived(kEventNames[event]), entered, kDeleted}));
      CHECK(NarrowToUtf8(SMStateName(empty.current)) == nextState);
    }
  }
}

TEST_CASE("every event in every state does what its row says, whatever the guards answer") {
  for (const NamedState& state : kNamedStates) {
    for (uint32_t event = 0; event < kEventNames.size(); ++event) {
      for (size_t answers = 0; answers < 8; ++answers) {
        Controller controller(state.state);
        for (size_t guard = 0; guard < kGuards.size(); ++guard) {
          if ((answers >> guard & 1) != 0) trueGuards.insert(kGuards[guard]);
        }
        const Outcome expected = Expected(state.name, kEventNames[event], trueGuards);
        CAPTURE(state.name);
        CAPTURE(kEventNames[event]);
        CAPTURE(answers);
        CHECK(controller.Post(static_cast<SMEvent>(event)) == expected.calls);
        CHECK(NarrowToUtf8(SMStateName(controller.machine.current)) == expected.nextState);
      }
    }
  }
}

TEST_CASE("a transition writes the event, runs the actions and writes the new state") {
  Controller controller(SMState::Spike_S3ToS4);
  CHECK(controller.Post(SMEvent::Suspend) == Names{
                                                 "trace State Machine event: ",
                                                 "trace 21/11/2026 8:5:9 - Suspend",
                                                 "trace \n",
                                                 "open Dozewell Service",
                                                 "report 4 21/11/2026 8:5:9 - Suspend",
                                                 "close",
                                                 "AH_TimeStampEvent",
                                                 "AH_RetryPredictedHWTimer",
                                                 "trace State Machine new state: ",
                                                 "trace Suspended",
                                                 "trace \n",
                                                 "open Dozewell Service",
                                                 "report 4 Suspended",
                                                 "close",
                                                 "event deleted",
                                             });
  CHECK(controller.machine.current == SMState::Suspended);
}

TEST_CASE("a second Activating while Active is an undefined event") {
  Controller controller;
  controller.Post(SMEvent::Activating);
  REQUIRE(controller.machine.current == SMState::Active);
  const std::string error =
      "State Machine Error: State: Active, Undefined event: 21/11/2026 8:5:9 - Activating";
  CHECK(controller.Post(SMEvent::Activating) ==
        InOrder({EventArrived("Activating"),
                 {"open Dozewell Service", "report 1 " + error, "close", "trace " + error},
                 kDeleted}));
  CHECK(controller.machine.current == SMState::Active);
}

TEST_CASE("a suspend that is announced twice is handled once") {
  Controller controller(SMState::Active);
  controller.Post(SMEvent::Suspend);
  CHECK(controller.Post(SMEvent::Suspend) ==
        InOrder({EventArrived("Suspend"), UndefinedEvent("Suspended", "Suspend"), kDeleted}));
  CHECK(controller.machine.current == SMState::Suspended);
}

TEST_CASE("a resume that neither the timer nor the timeout caused is a real one") {
  Controller controller(SMState::Suspended);
  trueGuards = {"GImpl_RealActivate"};
  CHECK(controller.Post(SMEvent::Activating) ==
        InOrder({EventArrived("Activating"),
                 kGuards,
                 {"AH_RecordHistoryEvent", "AH_LogEvent", "AH_RestoreHA", "AH_CancelHWTimer",
                  "LaunchOptimizerThread"},
                 StateEntered("Active"),
                 kDeleted}));
  CHECK(controller.machine.current == SMState::Active);
}

TEST_CASE("a wake by the timer puts the machine back to sleep and asks no other guard") {
  Controller controller(SMState::Suspended);
  trueGuards = {"GImpl_GoingToS3", "GImpl_GoingToS4", "GImpl_RealActivate"};
  CHECK(controller.Post(SMEvent::Activating) ==
        InOrder({EventArrived("Activating"),
                 {"GImpl_GoingToS3", "AH_SetNextPredictedHA", "AH_ProgramSleep"},
                 StateEntered("Spike_S4ToS3"),
                 kDeleted}));
  CHECK(controller.machine.current == SMState::Spike_S4ToS3);
}

TEST_CASE("a resume that every guard denies is dropped silently") {
  Controller controller(SMState::Suspended);
  CHECK(controller.Post(SMEvent::Activating) ==
        InOrder({EventArrived("Activating"), kGuards, kDeleted}));
  CHECK(controller.machine.current == SMState::Suspended);
}

TEST_CASE("a transition back to the same state tells of no new state") {
  Controller controller(SMState::Active);
  CHECK(controller.Post(SMEvent::ParamChanging) ==
        InOrder({EventArrived("ParamChanging"), {"AH_SetPredictorConfig"}, kDeleted}));
  CHECK(controller.Post(SMEvent::Saving) ==
        InOrder({EventArrived("Saving"), {"AH_SavePredictionData"}, kDeleted}));
  CHECK(controller.Post(SMEvent::ResetHistory) ==
        InOrder({EventArrived("ResetHistory"), {"AH_ResetHistory"}, kDeleted}));
}

TEST_CASE("an event without a known number is undefined and named UNKNOWN") {
  Controller controller(SMState::Active);
  CHECK(controller.Post(static_cast<SMEvent>(7)) ==
        InOrder({EventArrived("UNKNOWN"), UndefinedEvent("Active", "UNKNOWN"), kDeleted}));
}

TEST_CASE("an event made while the clock could not be read shows fields of -1") {
  Controller controller(SMState::Active);
  fakes::clock.utcSeconds = -1;
  CHECK(controller.Post(SMEvent::Saving) ==
        InOrder({Information("State Machine event: ", "-1/0/1899 -1:-1:-1 - Saving"),
                 {"AH_SavePredictionData"},
                 kDeleted}));
}

TEST_CASE("an event in a state that the table does not have is written and dropped") {
  Controller controller(static_cast<SMState>(5));
  CHECK(controller.Post(SMEvent::Activating) == InOrder({EventArrived("Activating"), kDeleted}));
  CHECK(controller.machine.current == static_cast<SMState>(5));
}

TEST_CASE("without an error handler an undefined event is only written") {
  for (const SMState state : {SMState::Active, SMState::Off}) {
    Controller controller(state);
    controller.machine.ReportStateMachineError = nullptr;
    CHECK(controller.Post(SMEvent::Activating) == InOrder({EventArrived("Activating"), kDeleted}));
    CHECK(controller.machine.current == state);
  }
}

TEST_CASE("a null event is an error that names the state") {
  for (const NamedState& state : kNamedStates) {
    Controller controller(state.state);
    PostEvent(nullptr);
    CHECK(fakes::eventLog.calls ==
          Error("SM Error: State: " + std::string(state.name) + ", NULL event"));
    CHECK(controller.machine.current == state.state);
  }
  const Controller controller(static_cast<SMState>(5));
  PostEvent(nullptr);
  CHECK(fakes::eventLog.calls == Error("SM Error: State: UNKNOWN, NULL event"));
}

TEST_CASE("an empty guard counts as false") {
  Controller controller(SMState::Suspended);
  controller.machine.GImpl_GoingToS3 = nullptr;
  trueGuards = {"GImpl_GoingToS3", "GImpl_GoingToS4"};
  CHECK(controller.Post(SMEvent::Activating) == InOrder({EventArrived("Activating"),
                                                         {"GImpl_GoingToS4"},
                                                         StateEntered("Spike_S3ToS4"),
                                                         kDeleted}));
}

TEST_CASE("a resume without any guard is dropped silently") {
  Controller controller(SMState::Suspended);
  controller.machine.GImpl_GoingToS3 = nullptr;
  controller.machine.GImpl_GoingToS4 = nullptr;
  controller.machine.GImpl_RealActivate = nullptr;
  CHECK(controller.Post(SMEvent::Activating) == InOrder({EventArrived("Activating"), kDeleted}));
  CHECK(controller.machine.current == SMState::Suspended);
}

TEST_CASE("an empty action is left out and the others run") {
  Controller controller(SMState::Active);
  controller.machine.TerminateOptimizerThread = nullptr;
  controller.machine.AH_TimeStampEvent = nullptr;
  controller.machine.AH_LogEvent = nullptr;
  CHECK(controller.Post(SMEvent::Suspend) ==
        InOrder({EventArrived("Suspend"),
                 {"AH_RecordHistoryEvent", "AH_SetPredictedSettings"},
                 StateEntered("Suspended"),
                 kDeleted}));
}

TEST_CASE("a slot may be filled after the table was built") {
  Controller controller(SMState::Active);
  controller.Post(SMEvent::Saving);
  controller.machine.AH_SavePredictionData = Act<"another handler">;
  CHECK(controller.Post(SMEvent::Saving) ==
        InOrder({EventArrived("Saving"), {"another handler"}, kDeleted}));
}

TEST_CASE("an action's exception reaches the poster, and the state stays as it was") {
  Controller controller(SMState::Active);
  controller.machine.AH_SaveHistory = Throw;
  CHECK_THROWS_WITH_AS(controller.Post(SMEvent::ShuttingDown), "thrown by an action",
                       std::runtime_error);
  CHECK(fakes::eventLog.calls == InOrder({EventArrived("ShuttingDown"),
                                          {"TerminateOptimizerThread", "AH_RecordHistoryEvent"},
                                          kDeleted}));
  CHECK(controller.machine.current == SMState::Active);
  CHECK(controller.Post(SMEvent::Saving) ==
        InOrder({EventArrived("Saving"), {"AH_SavePredictionData"}, kDeleted}));
}

TEST_CASE("a guard's exception reaches the poster, and the state stays as it was") {
  Controller controller(SMState::Suspended);
  controller.machine.GImpl_GoingToS4 = ThrowingGuard;
  trueGuards = {"GImpl_RealActivate"};
  CHECK_THROWS_WITH_AS(controller.Post(SMEvent::Activating), "thrown by a guard",
                       std::runtime_error);
  CHECK(fakes::eventLog.calls ==
        InOrder({EventArrived("Activating"), {"GImpl_GoingToS3"}, kDeleted}));
  CHECK(controller.machine.current == SMState::Suspended);
}

TEST_CASE("an event posted without a machine is deleted silently") {
  fakes::eventLog = {};
  REQUIRE(StateMachine == nullptr);
  PostEvent(std::make_unique<WatchedEvent>(SMEvent::Activating));
  PostEvent(nullptr);
  CHECK(fakes::eventLog.calls == kDeleted);
}

TEST_CASE("a reset that finds the history's file being worked on waits without any event's lock") {
  // The file's lock is busy at first, and then, or not, the controller's.
  for (const bool busyTwice : {false, true}) {
    CAPTURE(busyTwice);
    Controller controller(SMState::Active);
    bool engineBusy = true;
    bool controllerBusy = busyTwice;
    Names waits;
    fakes::locks.isBusy = [&](const Lock& lock) {
      return std::exchange(&lock == &EngineLock ? engineBusy : controllerBusy, false);
    };
    fakes::locks.beforeTaking = [&](const Lock& lock) {
      CHECK_FALSE(fakes::IsTaken(ControllerLock));
      CHECK_FALSE(fakes::IsTaken(EngineLock));
      waits.emplace_back(&lock == &EngineLock ? "engine" : "controller");
    };
    controller.machine.AH_ResetHistory = [](const SMEventData*) {
      CHECK(fakes::IsTaken(ControllerLock));
      CHECK(fakes::IsTaken(EngineLock));
      fakes::eventLog.calls.emplace_back("reset");
    };
    const Names calls = controller.Post(SMEvent::ResetHistory);
    CHECK(waits == (busyTwice ? Names{"controller", "engine", "controller"}
                              : Names{"controller", "engine"}));
    CHECK(std::ranges::count(calls, "reset") == 1);
    CHECK_FALSE(fakes::IsTaken(ControllerLock));
    CHECK_FALSE(fakes::IsTaken(EngineLock));
    fakes::ResetLocks();
  }
}

TEST_CASE("other events do not ask for the lock of the history's file") {
  for (const SMEvent event : {SMEvent::Activating, SMEvent::Suspend, SMEvent::ShuttingDown,
                              SMEvent::ParamChanging, SMEvent::Uninitializing, SMEvent::Saving}) {
    Controller controller(SMState::Active);
    fakes::locks.beforeTaking = [](const Lock& lock) { CHECK(&lock == &ControllerLock); };
    fakes::locks.isBusy = [](const Lock&) {
      FAIL("nothing is tried");
      return false;
    };
    controller.Post(event);
    fakes::ResetLocks();
  }
}

}  // namespace dozewell
