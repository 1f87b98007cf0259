#include "service/control_handler.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <stdexcept>
#include <string>

#include "base/lock.h"
#include "base/process_flags.h"
#include "controller/controller.h"
#include "controller/engine.h"
#include "controller/state_machine/state_machine.h"
#include "fakes/clock_fake.h"
#include "fakes/event_log_fake.h"
#include "fakes/journal.h"
#include "fakes/lock_fake.h"
#include "fakes/machine.h"
#include "fakes/service_fake.h"
#include "fakes/settings_fake.h"
#include "fakes/thread_fake.h"
#include "service/service_host.h"
#include "service/service_status.h"
#include "support/calls.h"
#include "support/local_times.h"

namespace dozewell {
namespace {

// A running service, without a controller until it is given one. The controller has no actions, so
// a posted event shows only in what the machine logs.
struct Handler {
  fakes::Machine machine;

  Handler() {
    fakes::service.registered = true;
    SetServiceState(kServiceRunning, 0);
  }
  void StartIn(SMState state) {
    StateMachine = new SleepStateMachine;
    StateMachine->ReportStateMachineError = [](const wchar_t*) {};
    StateMachine->current = state;
    ControllerStarted = true;
  }
  // The calls that a control leads to, without the debugger's lines.
  Calls Handle(uint32_t control, uint32_t eventType = 0, const void* data = nullptr) {
    fakes::TakeJournal();
    CHECK(ServiceCtrlHandler(control, eventType, data) == 0);
    Calls calls = fakes::TakeJournal();
    std::erase_if(calls, [](const std::string& call) { return call.starts_with("trace "); });
    return calls;
  }
  Calls Power(uint32_t eventType, const void* data = nullptr) {
    return Handle(13, eventType, data);
  }
};

const char* const kRunning = "service: status 4 0";

Calls Logged(const std::string& event, const std::string& state = "") {
  Calls calls = {"report 4 21/11/2026 8:5:9 - " + event};
  if (!state.empty()) calls.push_back("report 4 " + state);
  return calls;
}

void ThrowInt(const SMEventData*) { throw 42; }
void ThrowError(const SMEventData*) { throw std::runtime_error("thrown by an action"); }

}  // namespace

TEST_CASE("a stop ends the controller's work and the RPC server, and is pending") {
  Handler handler;
  handler.StartIn(SMState::Active);
  CHECK(handler.Handle(1) == Joined({Logged("Uninitializing", "Uninitialized"),
                                     {"service: stop listening", "service: status 3 0"}}));
}

TEST_CASE("a stop without a controller posts nothing") {
  Handler handler;
  CHECK(handler.Handle(1) == Calls{"service: stop listening", "service: status 3 0"});
}

TEST_CASE("an RPC server that does not stop is reported, and the stop is pending") {
  Handler handler;
  fakes::service.failer = {.firstFailing = 1, .failures = 1, .calls = 0};
  CHECK(handler.Handle(1) == Calls{"service: stop listening",
                                   "report 1 StopRPCServer: RpcMgmtStopServerListening() failed!",
                                   "service: status 3 0"});
}

TEST_CASE("a machine that is left from a start that failed gets no events") {
  Handler handler;
  handler.StartIn(SMState::Active);
  ControllerStarted = false;
  CHECK(handler.Handle(1) == Calls{"service: stop listening", "service: status 3 0"});
  CHECK(handler.Handle(5) == Calls{"service: status 1 0"});
  CHECK(handler.Power(4) == Calls{"service: status 1 0"});
  CHECK(StateMachine->current == SMState::Active);
}

TEST_CASE("an event's type and data count only for the control that they belong to") {
  Handler handler;
  handler.StartIn(SMState::Spike_S4ToS3);
  LastSaveTime = LocalTime(2020, 1, 1);
  CHECK(handler.Power(18, kIdleBackgroundTask.data()) ==
        Joined({Logged("Activating", "Active"), {kRunning}}));
  CHECK(LastSaveTime == LocalTime(2020, 1, 1));
  CHECK(handler.Handle(5, 10) == Joined({Logged("ShuttingDown", "Off"), {"service: status 1 0"}}));
}

TEST_CASE("pause and continue change the status and nothing else") {
  Handler handler;
  handler.StartIn(SMState::Active);
  CHECK(handler.Handle(2) == Calls{"service: status 7 0"});
  // A paused service still handles power events.
  CHECK(handler.Power(4) == Joined({Logged("Suspend", "Suspended"), {"service: status 7 0"}}));
  CHECK(handler.Handle(3) == Calls{kRunning});
}

TEST_CASE("interrogation and session changes only have the status sent") {
  for (const uint32_t control : {4U, 14U}) {
    Handler handler;
    handler.StartIn(SMState::Active);
    CHECK(handler.Handle(control, 5) == Calls{kRunning});
    SetServiceState(kServicePaused, 17);
    CHECK(handler.Handle(control) == Calls{"service: status 7 17"});
  }
}

TEST_CASE("a shut-down is posted and the service reports that it stopped, with all still running") {
  Handler handler;
  handler.StartIn(SMState::Active);
  CHECK(handler.Handle(5) == Joined({Logged("ShuttingDown", "Off"), {"service: status 1 0"}}));
  CHECK(ControllerStarted);
  Handler without;
  CHECK(without.Handle(5) == Calls{"service: status 1 0"});
}

TEST_CASE("a control that is not known is reported with its number, and the status sent") {
  struct Row {
    uint32_t control;
    const char* number;
  };
  for (const Row& row : {Row{0, "0"},
                         {6, "6"},
                         {7, "7"},
                         {11, "11"},
                         {12, "12"},
                         {15, "15"},
                         {128, "128"},
                         {255, "255"}}) {
    Handler handler;
    handler.StartIn(SMState::Active);
    CHECK(handler.Handle(row.control) ==
          Calls{std::string("report 1 Unrecognized opcode ") + row.number + "\n", kRunning});
  }
}

TEST_CASE("a status that cannot be sent is reported with its code after any control") {
  for (const uint32_t control : {2U, 3U, 4U, 13U, 14U}) {
    Handler handler;
    fakes::service.error = 87;
    fakes::service.failer.firstFailing = 1;
    const Calls calls = handler.Handle(control);
    REQUIRE(calls.size() == 2);
    CHECK(calls[1] == "report 1 SetServiceStatus error 87\n");
  }
}

TEST_CASE("without a handle for statuses every control reports that") {
  Handler handler;
  fakes::service.registered = false;
  CHECK(handler.Handle(4) == Calls{kRunning, "report 1 SetServiceStatus error 6\n"});
}

TEST_CASE("a suspend is posted to a controller that runs") {
  Handler handler;
  handler.StartIn(SMState::Active);
  CHECK(handler.Power(4) == Joined({Logged("Suspend", "Suspended"), {kRunning}}));
  Handler without;
  CHECK(without.Power(4) == Calls{kRunning});
}

TEST_CASE("an automatic resume is posted to a controller that runs") {
  Handler handler;
  handler.StartIn(SMState::Spike_S4ToS3);
  CHECK(handler.Power(18) == Joined({Logged("Activating", "Active"), {kRunning}}));
}

TEST_CASE("an automatic resume without a controller counts as an attempt to start it") {
  Handler handler;
  FeatureEnabled = true;
  fakes::settings.current.values[L"TotalAttempts"] = fakes::Number32(2);
  fakes::settings.current.values[L"CurrentAttempt"] = fakes::Number32(1);
  const Calls attempt = {"settings: ReadSetting TotalAttempts",
                         "settings: ReadSetting CurrentAttempt",
                         "settings: WriteSetting StartTime 1795248309"};
  CHECK(handler.Power(18) ==
        Joined({attempt, {"settings: WriteSetting CurrentAttempt 2", kRunning}}));
  CHECK(handler.Power(18) == Joined({attempt, {"thread: start", kRunning}}));
  fakes::threads.Run();
  CHECK(ControllerStarted);
}

TEST_CASE("a change of power status launches the optimizer, with or without a controller") {
  Handler handler;
  SUBCASE("with a controller") { handler.StartIn(SMState::Active); }
  SUBCASE("without") {}
  CHECK(handler.Power(10) ==
        Calls{"thread: start", "report 4 Launch optimizer thread, 1\n", kRunning});
}

TEST_CASE("other power events do nothing") {
  std::array<uint8_t, 16> setting = kIdleBackgroundTask;
  // Among these are the resume by a user, a low battery and a critical resume.
  for (const uint32_t type : {0U, 6U, 7U, 9U, 11U, 0x8012U, 0x8014U}) {
    Handler handler;
    handler.StartIn(SMState::Suspended);
    LastSaveTime = LocalTime(2020, 1, 1);
    CHECK(handler.Power(type, setting.data()) == Calls{kRunning});
  }
}

TEST_CASE("idle time saves once, when more than a day has passed since the last save") {
  struct Row {
    tm now;
    bool saves;
  };
  const tm last = LocalTime(2026, 11, 20, 8, 5, 9);
  const Row rows[] = {
      {LocalTime(2026, 11, 20, 8, 5, 9), false},
      {LocalTime(2026, 11, 20, 23, 59, 59), false},
      {LocalTime(2026, 11, 21, 8, 5, 8), false},
      {LocalTime(2026, 11, 21, 8, 5, 9), false},
      {LocalTime(2026, 11, 21, 8, 5, 10), true},
      {LocalTime(2027, 11, 20), true},
      // The clock was set back.
      {LocalTime(2026, 11, 19, 8, 5, 9), false},
      {LocalTime(2026, 11, 19, 8, 5, 8), true},
  };
  for (const Row& row : rows) {
    Handler handler;
    handler.StartIn(SMState::Active);
    LastSaveTime = last;
    fakes::SetTime(row.now);
    const Calls calls = handler.Power(0x8013, kIdleBackgroundTask.data());
    REQUIRE(calls.size() == (row.saves ? 2 : 1));
    CHECK(calls.back() == kRunning);
    CHECK(LastSaveTime == (row.saves ? row.now : last));
    if (!row.saves) continue;
    CHECK(calls[0].ends_with(" - Saving"));
    CHECK(handler.Power(0x8013, kIdleBackgroundTask.data()) == Calls{kRunning});
  }
}

TEST_CASE("the time since the last save is looked at under the controller's lock") {
  Handler handler;
  handler.StartIn(SMState::Active);
  bool taken = false;
  fakes::clock.whileRead = [&] { taken = taken || fakes::IsTaken(ControllerLock); };
  LastSaveTime = LocalTime(2026, 11, 21);
  CHECK(handler.Power(0x8013, kIdleBackgroundTask.data()) == Calls{kRunning});
  CHECK(taken);
  CHECK_FALSE(fakes::IsTaken(ControllerLock));
}

TEST_CASE("daylight saving does not enter the time since the last save") {
  Handler handler;
  handler.StartIn(SMState::Active);
  LastSaveTime = LocalTime(2026, 10, 24, 12);
  LastSaveTime.tm_isdst = 1;
  tm now = LocalTime(2026, 10, 25, 12);
  now.tm_isdst = 0;
  fakes::SetTime(now);
  CHECK(handler.Power(0x8013, kIdleBackgroundTask.data()) == Calls{kRunning});
  now.tm_sec = 1;
  fakes::SetTime(now);
  CHECK(handler.Power(0x8013, kIdleBackgroundTask.data()).size() == 2);
}

TEST_CASE("a save outside Active is an undefined event, and the next is a day away all the same") {
  Handler handler;
  handler.StartIn(SMState::Suspended);
  CHECK(handler.Power(0x8013, kIdleBackgroundTask.data()) ==
        Joined({Logged("Saving"), {kRunning}}));
  CHECK(handler.Power(0x8013, kIdleBackgroundTask.data()) == Calls{kRunning});
}

TEST_CASE("another power setting, or none, saves nothing") {
  for (size_t byte = 0; byte < 16; ++byte) {
    Handler handler;
    handler.StartIn(SMState::Active);
    std::array<uint8_t, 16> setting = kIdleBackgroundTask;
    setting.at(byte) ^= 1;
    CHECK(handler.Power(0x8013, setting.data()) == Calls{kRunning});
  }
  Handler handler;
  handler.StartIn(SMState::Active);
  CHECK(handler.Power(0x8013, nullptr) == Calls{kRunning});
}

TEST_CASE("idle time without a controller saves nothing and moves nothing") {
  Handler handler;
  CHECK(handler.Power(0x8013, kIdleBackgroundTask.data()) == Calls{kRunning});
  CHECK(LastSaveTime == tm{});
}

TEST_CASE("a clock that cannot be read saves nothing") {
  Handler handler;
  handler.StartIn(SMState::Active);
  fakes::clock.utcSeconds = -1;
  CHECK(handler.Power(0x8013, kIdleBackgroundTask.data()) == Calls{kRunning});
  CHECK(LastSaveTime == tm{});
}

TEST_CASE("what an event's actions throw ends in the handler, and the status is sent") {
  for (const auto action : {ThrowInt, ThrowError}) {
    Handler handler;
    handler.StartIn(SMState::Active);
    StateMachine->TerminateOptimizerThread = action;
    StateMachine->AH_SavePredictionData = action;
    CHECK(handler.Power(4) == Joined({Logged("Suspend"), {kRunning}}));
    CHECK(handler.Power(0x8013, kIdleBackgroundTask.data()) ==
          Joined({Logged("Saving"), {kRunning}}));
    CHECK(handler.Handle(5) == Joined({Logged("ShuttingDown"), {"service: status 1 0"}}));
    CHECK(handler.Handle(1) ==
          Joined({Logged("Uninitializing"), {"service: stop listening", "service: status 3 0"}}));
    CHECK(StateMachine->current == SMState::Active);
  }
}

TEST_CASE("what the predictor throws that is no exception is reported and ends in the handler") {
  struct Thrower : ITimeLineListener {
    void OnTimeLineEvent(const TimeLineEvent&) override { throw 42; }
  };
  Handler handler;
  Thrower thrower;
  StartController();
  engine.historian->RegisterListener(&thrower);
  const Calls calls = handler.Power(4);
  CHECK(Calls(calls.end() - 2, calls.end()) ==
        Calls{"report 1 AH_LogEvent: HistorianObj::NotifyListener threw an unknown exception",
              kRunning});
  CHECK(StateMachine->current == SMState::Active);
}

TEST_CASE("a control is handled under the status lock, to its end") {
  static bool taken;
  taken = false;
  Handler handler;
  handler.StartIn(SMState::Active);
  StateMachine->AH_RecordHistoryEvent = [](const SMEventData*) {
    taken = fakes::IsTaken(StatusLock);
  };
  handler.Power(4);
  CHECK(taken);
  CHECK_FALSE(fakes::IsTaken(StatusLock));
}

TEST_CASE("suspends, resumes and changes of the power status wait for no file of what was learnt") {
  Handler handler;
  FeatureEnabled = true;
  fakes::settings.current.values[L"TotalAttempts"] = fakes::Number32(0);
  fakes::settings.current.values[L"CurrentAttempt"] = fakes::Number32(0);
  const auto check = [&] {
    // Whoever works on a file holds this lock.
    fakes::locks.beforeTaking = [](const Lock& lock) { CHECK(&lock != &EngineLock); };
    fakes::locks.isBusy = [](const Lock&) {
      FAIL("nothing is tried");
      return false;
    };
    handler.Power(kPowerStatusChange);
    handler.Power(kPowerSuspend);
    handler.Power(kPowerStatusChange);
    handler.Power(kPowerResumeAutomatic);
    fakes::locks = {};
  };
  check();
  fakes::threads.Run();
  REQUIRE(ControllerStarted);
  fakes::TakeJournal();
  check();
  CHECK(StateMachine->current == SMState::Active);
  CHECK(std::ranges::count(fakes::eventLog.calls, "report 4 Suspended") == 1);
}

TEST_CASE("leaving the console stops the service, other console events are left alone") {
  for (uint32_t type = 0; type < 8; ++type) {
    Handler handler;
    handler.StartIn(SMState::Active);
    const bool leaves = type != 3 && type != 4 && type != 7;
    fakes::TakeJournal();
    CHECK(ConsoleCtrlHandler(type) == leaves);
    Calls calls = fakes::TakeJournal();
    std::erase_if(calls, [](const std::string& call) { return call.starts_with("trace "); });
    CHECK(calls == (leaves ? Joined({Logged("Uninitializing", "Uninitialized"),
                                     {"service: stop listening", "service: status 3 0"}})
                           : Calls{}));
  }
}

}  // namespace dozewell
