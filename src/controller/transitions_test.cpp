// The controller as the service starts it: every event in every state, for every kind of wake.

#include <doctest/doctest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "base/utf8.h"
#include "controller/controller.h"
#include "controller/engine.h"
#include "controller/state_machine/state_machine.h"
#include "fakes/driver_fake.h"
#include "fakes/journal.h"
#include "fakes/machine.h"
#include "power/open_driver_device.h"
#include "support/calls.h"
#include "support/local_times.h"

namespace dozewell {
namespace {

// What the driver and the power scheme show on a resume.
struct WakeCase {
  const char* name;
  bool byTimer;
  bool bySystem;
};
const WakeCase kWakeCases[] = {
    {"neither", false, false},
    {"timer", true, false},
    {"system", false, true},
    {"both", true, true},
};

// A started controller in a state, 30 minutes after a suspend at 18:00, with a night still ahead.
struct WokenController {
  fakes::Machine machine;

  WokenController(SMState state, const WakeCase& wake) {
    OpenDriverDevice();
    StartController();
    StateMachine->current = state;
    engine.suspendTime = LocalTime(2026, 11, 21, 18, wake.bySystem ? 0 : 10);
    engine.nextSleepTime = LocalTime(2026, 11, 22, 8);
    engine.nextHAMinutes = 600;
    fakes::SetTime(LocalTime(2026, 11, 21, 18, 30));
    fakes::driver.timer.words = {0, wake.byTimer ? 0xC8000343 : 0x88000343};
    fakes::driver.previousSleepStatus = wake.byTimer ? 5 : 4;
    // A wake can be of both kinds only without a status, so the first reading of the status fails.
    if (wake.byTimer && wake.bySystem) {
      fakes::driver.previousSleepStatus = 4;
      fakes::driver.failer.firstFailing = 2;
    }
    fakes::TakeJournal();
  }
  // The names of the handlers that an event ran, as they wrote them to the debugger, followed by
  // what the error handler reported and by the new state.
  Calls Post(uint32_t event) {
    if (event == 3) {
      PostEvent(std::make_unique<ParamChangeEventData>("Strength"));
    } else {
      PostEvent(std::make_unique<SMEventData>(static_cast<SMEvent>(event)));
    }
    return NamesIn(fakes::TakeJournal());
  }

 private:
  static Calls NamesIn(const Calls& journal) {
    Calls names;
    bool isState = false;
    for (const std::string& call : journal) {
      if (call.starts_with("trace AH_") || call.starts_with("trace GImpl_")) {
        names.push_back(call.substr(6, call.find_first_of(":\n") - 6));
      } else if (call.starts_with("report 1 ")) {
        names.push_back(call.substr(9));
      } else if (isState) {
        names.push_back("-> " + call.substr(6));
      }
      isState = call == "trace State Machine new state: ";
    }
    return names;
  }
};

const char* const kLoggedEvents[] = {"Activating",     "Suspend", "ShuttingDown", "ParamChanging",
                                     "Uninitializing", "Saving",  "ResetHistory"};
const SMState kStates[] = {SMState::Uninitialized, SMState::Active,    SMState::Spike_S3ToS4,
                           SMState::Spike_S4ToS3,  SMState::Suspended, SMState::Off};

const Calls kRealResume = {"AH_RecordHistoryEvent", "AH_LogEvent", "AH_RestoreHA",
                           "AH_CancelHWTimer"};
const Calls kShutDownFromSpike = {"AH_RecordHistoryEvent", "AH_LogEvent",
                                  "AH_PredictorContainerOff", "AH_SaveHistory", "-> Off"};
const Calls kToActive = {"-> Active"};

// The handlers that an event runs in a state. A resume from Suspended depends on the kind of wake.
struct Row {
  SMState state;
  uint32_t event;
  Calls ran;
};
const Row kRows[] = {
    {SMState::Uninitialized,
     0,
     {"AH_LogEvent", "AH_RecordHistoryEvent", "AH_RestoreHA", "AH_CancelHWTimer", "-> Active"}},
    {SMState::Active,
     1,
     {"AH_RecordHistoryEvent", "AH_TimeStampEvent", "AH_SetPredictedSettings", "AH_LogEvent",
      "-> Suspended"}},
    {SMState::Active,
     2,
     {"AH_RecordHistoryEvent", "AH_SaveHistory", "AH_LogEvent", "AH_PredictorContainerOff",
      "-> Off"}},
    {SMState::Active, 3, {"AH_SetPredictorConfig"}},
    {SMState::Active,
     4,
     {"AH_RecordHistoryEvent", "AH_SaveHistory", "AH_PredictorContainerOff", "-> Uninitialized"}},
    {SMState::Active, 5, {"AH_SavePredictionData"}},
    {SMState::Active, 6, {"AH_ResetHistory"}},
    {SMState::Spike_S3ToS4, 0, Joined({kRealResume, kToActive})},
    {SMState::Spike_S3ToS4, 1, {"AH_TimeStampEvent", "AH_RetryPredictedHWTimer", "-> Suspended"}},
    {SMState::Spike_S3ToS4, 2, kShutDownFromSpike},
    {SMState::Spike_S4ToS3, 0, Joined({kRealResume, kToActive})},
    {SMState::Spike_S4ToS3, 1, {"AH_TimeStampEvent", "-> Suspended"}},
    {SMState::Spike_S4ToS3, 2, kShutDownFromSpike},
};

Calls ResumeFromSuspended(const WakeCase& wake) {
  if (wake.byTimer) {
    return {"GImpl_GoingToS3", "AH_SetNextPredictedHA", "AH_ProgramSleep", "-> Spike_S4ToS3"};
  }
  if (wake.bySystem) return {"GImpl_GoingToS3", "GImpl_GoingToS4", "-> Spike_S3ToS4"};
  return Joined({{"GImpl_GoingToS3", "GImpl_GoingToS4", "GImpl_RealActivate", "GImpl_GoingToS3",
                  "GImpl_GoingToS4"},
                 kRealResume,
                 kToActive});
}

Calls Expected(SMState state, uint32_t event, const WakeCase& wake) {
  if (state == SMState::Suspended && event == 0) return ResumeFromSuspended(wake);
  for (const Row& row : kRows) {
    if (row.state == state && row.event == event) return row.ran;
  }
  return {"State Machine Error: State: " + NarrowToUtf8(SMStateName(state)) +
          ", Undefined event: 21/11/2026 18:30:0 - " + kLoggedEvents[event]};
}

}  // namespace

TEST_CASE("every event in every state runs its handlers in their order, for every kind of wake") {
  for (const SMState state : kStates) {
    for (uint32_t event = 0; event < 7; ++event) {
      for (const WakeCase& wake : kWakeCases) {
        WokenController controller(state, wake);
        CAPTURE(NarrowToUtf8(SMStateName(state)));
        CAPTURE(kLoggedEvents[event]);
        CAPTURE(wake.name);
        const Calls ran = controller.Post(event);
        CHECK(ran == Expected(state, event, wake));
        const bool moves = !ran.empty() && ran.back().starts_with("-> ");
        CHECK(NarrowToUtf8(SMStateName(StateMachine->current)) ==
              (moves ? ran.back().substr(3) : NarrowToUtf8(SMStateName(state))));
      }
    }
  }
}

TEST_CASE("a stop outside Active leaves the history unsaved") {
  for (const SMState state : {SMState::Suspended, SMState::Spike_S3ToS4, SMState::Spike_S4ToS3}) {
    WokenController controller(state, kWakeCases[0]);
    controller.Post(4);
    CHECK(controller.machine.HasNoFiles());
  }
  WokenController controller(SMState::Active, kWakeCases[0]);
  controller.Post(4);
  CHECK_FALSE(controller.machine.HasNoFiles());
}

TEST_CASE("one real resume asks for each kind of wake twice") {
  WokenController controller(SMState::Suspended, kWakeCases[0]);
  controller.Post(0);
  CHECK(fakes::driver.calls ==
        std::vector<std::string>{"open", "read timer", "read previous sleep status",
                                 "read previous sleep status", "read timer",
                                 "read previous sleep status", "read previous sleep status"});
}

}  // namespace dozewell
