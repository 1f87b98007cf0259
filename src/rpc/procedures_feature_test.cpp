// Switching the feature on and off, and asking for it.

#include <doctest/doctest.h>

#include <cstdint>
#include <memory>
#include <string>

#include "base/file.h"
#include "base/process_flags.h"
#include "controller/controller.h"
#include "controller/engine.h"
#include "controller/state_machine/state_machine.h"
#include "fakes/driver_fake.h"
#include "fakes/served_machine.h"
#include "fakes/settings_fake.h"
#include "fakes/thread_fake.h"
#include "rpc/procedures.h"
#include "service/start_gate.h"
#include "settings/settings_store.h"

namespace dozewell {
namespace {

using fakes::Answer;
using fakes::Ask;
using fakes::kTimerRead;
using fakes::ServedMachine;
using fakes::SetTimer;
using fakes::TakeProvisionsAway;

fakes::Value Current(const wchar_t* name) { return fakes::settings.current.values[name]; }

void SetCurrent(const wchar_t* name, uint32_t number) {
  fakes::settings.current.values[name] = fakes::Number32(number);
}

// The calls of a start of the controller on a machine with the driver open.
Calls ControllerStartCalls() {
  const ServedMachine machine;
  fakes::TakeJournal();
  StartController();
  return fakes::TakeJournal();
}

const Calls kAttemptsRead = {"settings: ReadSetting CurrentAttempt",
                             "settings: ReadSetting TotalAttempts"};
const Calls kOnWritten = {"settings: WriteSetting EnableZ7Feature 1"};
const Calls kOffWritten = {"settings: WriteSetting EnableZ7Feature 0"};

// How far the building of a controller comes without the predictor's values.
const Calls kNotBuilt = {"settings: GetDataFolder", "settings: ReadSetting TimeResolution"};

// The controller is built and waits for events.
bool ControllerRuns() {
  return ControllerStarted && StateMachine != nullptr && StateMachine->current == SMState::Active &&
         engine.predictor != nullptr;
}

bool ControllerIsGone() {
  return !ControllerStarted && StateMachine == nullptr && engine.predictor == nullptr;
}

}  // namespace

TEST_CASE(
    "switching on starts the controller, opens its gate, stores the choice and enables timers") {
  const Calls started = ControllerStartCalls();
  const ServedMachine machine;
  SetCurrent(L"TotalAttempts", 10);
  SetCurrent(L"CurrentAttempt", 3);
  SetTimer(0x40000343, 0x38012345);
  CHECK(Ask([] { return SetFeatureEnabled(true); }) ==
        Answer{true, Joined({started,
                             kAttemptsRead,
                             {"settings: WriteSetting CurrentAttempt 10"},
                             kOnWritten,
                             kTimerRead,
                             {"driver: write timer c0000343 b8012345"}})});
  CHECK(ControllerRuns());
  CHECK(Current(L"CurrentAttempt") == fakes::Number32(10));
  CHECK(Current(L"EnableZ7Feature") == fakes::Number32(1));
}

TEST_CASE("switching off stops the controller, stores the choice and disables the timers") {
  const ServedMachine machine;
  SetFeatureEnabled(true);
  SetTimer(0xFFFFFFFF, 0x88000343);
  CHECK(Ask([] { return SetFeatureEnabled(false); }) ==
        Answer{true, Joined({kOffWritten, kTimerRead, {"driver: write timer 7fffffff 08000343"}})});
  CHECK(ControllerIsGone());
  CHECK(Current(L"EnableZ7Feature") == fakes::Number32(0));
}

TEST_CASE("the gate is opened only where attempts are still missing") {
  struct Row {
    uint32_t current;
    uint32_t total;
    uint32_t after;
  };
  const Row rows[] = {
      {3, 10, 10},
      {9, 10, 10},
      {10, 10, 10},
      {11, 10, 11},
      {0, 0, 0},
      {0, 0x80000000, 0x80000000},
      {0xFFFFFFFF, 10, 0xFFFFFFFF},
  };
  for (const Row& row : rows) {
    CAPTURE(row.current);
    const ServedMachine machine;
    StartController();
    SetCurrent(L"CurrentAttempt", row.current);
    SetCurrent(L"TotalAttempts", row.total);
    const Calls raised =
        row.after == row.current
            ? Calls{}
            : Calls{"settings: WriteSetting CurrentAttempt " + std::to_string(row.after)};
    CHECK(Ask([] { return SetFeatureEnabled(true); }) ==
          Answer{true, Joined({kAttemptsRead,
                               raised,
                               kOnWritten,
                               kTimerRead,
                               {"driver: write timer 80000000 80000000"}})});
    CHECK(Current(L"CurrentAttempt") == fakes::Number32(row.after));
  }
}

TEST_CASE("attempts come from the fallback keys, or count as 0 of 10") {
  {
    const ServedMachine machine;
    fakes::settings.branding.values[L"CurrentAttempt"] = fakes::Number32(2);
    fakes::settings.defaults.values[L"TotalAttempts"] = fakes::Number32(5);
    CHECK(SetFeatureEnabled(true));
    CHECK(Current(L"CurrentAttempt") == fakes::Number32(5));
  }
  {
    const ServedMachine machine;
    CHECK(SetFeatureEnabled(true));
    CHECK(Current(L"CurrentAttempt") == fakes::Number32(10));
  }
  const ServedMachine machine;
  fakes::settings.branding.values[L"CurrentAttempt"] = fakes::Number32(10);
  CHECK(SetFeatureEnabled(true));
  CHECK_FALSE(fakes::settings.current.values.contains(L"CurrentAttempt"));
}

TEST_CASE("after switching on, a start of the service starts the controller at once") {
  const ServedMachine machine;
  SetCurrent(L"TotalAttempts", 10);
  SetCurrent(L"CurrentAttempt", 0);
  SetFeatureEnabled(true);
  SetFeatureEnabled(false);
  FeatureEnabled = true;
  const Calls calls = Ask([] {
                        TryStartController();
                        return true;
                      }).calls;
  CHECK(calls.back() == "thread: start");
}

TEST_CASE("switching on what is on, and off what is off, stores the choice and asks the driver") {
  const ServedMachine machine;
  SetFeatureEnabled(true);
  const SleepStateMachine* const before = StateMachine;
  CHECK(Ask([] { return SetFeatureEnabled(true); }) ==
        Answer{true, Joined({kAttemptsRead,
                             kOnWritten,
                             kTimerRead,
                             {"driver: write timer 80000000 80000000"}})});
  CHECK(StateMachine == before);
  SetFeatureEnabled(false);
  CHECK(Ask([] { return SetFeatureEnabled(false); }) ==
        Answer{true, Joined({kOffWritten, kTimerRead, {"driver: write timer 00000000 00000000"}})});
  CHECK(ControllerIsGone());
}

TEST_CASE("without the driver the feature is switched all the same, and refused") {
  const fakes::Machine machine;
  CHECK_FALSE(SetFeatureEnabled(true));
  CHECK(ControllerRuns());
  CHECK(Current(L"EnableZ7Feature") == fakes::Number32(1));
  CHECK(Current(L"CurrentAttempt") == fakes::Number32(10));
  CHECK(Ask([] { return SetFeatureEnabled(false); }) ==
        Answer{false, Joined({kOffWritten, {"driver: read timer on no device"}})});
  CHECK(ControllerIsGone());
}

TEST_CASE("a timer that cannot be read is not written, and one that cannot be written refuses") {
  for (const bool enable : {true, false}) {
    const ServedMachine machine;
    SetCurrent(L"CurrentAttempt", 10);
    StartController();
    SetTimer(0x12345678, 0x87654321);
    const Calls stored = enable ? Joined({kAttemptsRead, kOnWritten, kTimerRead})
                                : Joined({kOffWritten, kTimerRead});
    fakes::driver.failer = {.firstFailing = 1};
    CHECK(Ask([&] { return SetFeatureEnabled(enable); }) == Answer{false, stored});
    fakes::driver.failer = {.firstFailing = 2};
    const std::string written =
        enable ? "driver: write timer 92345678 87654321" : "driver: write timer 12345678 07654321";
    CHECK(Ask([&] { return SetFeatureEnabled(enable); }) ==
          Answer{false, Joined({stored, {written}})});
    CHECK(ControllerStarted == enable);
    CHECK(Current(L"EnableZ7Feature") == fakes::Number32(enable ? 1 : 0));
  }
}

TEST_CASE("settings that cannot be read or written do not keep the feature from being switched") {
  struct Row {
    int firstFailing;
    uint32_t attempts;  // afterwards
    uint32_t stored;
  };
  // The calls: read both attempts, write one, write the choice. An attempt that cannot be read
  // counts as its default.
  const Row rows[] = {{1, 7, 1}, {2, 10, 1}, {3, 3, 1}, {4, 7, 0}};
  for (const Row& row : rows) {
    CAPTURE(row.firstFailing);
    const ServedMachine machine;
    StartController();
    SetCurrent(L"CurrentAttempt", 3);
    SetCurrent(L"TotalAttempts", 7);
    SetCurrent(L"EnableZ7Feature", 0);
    fakes::settings.failer = {.firstFailing = row.firstFailing};
    CHECK(SetFeatureEnabled(true));
    CHECK(Current(L"CurrentAttempt") == fakes::Number32(row.attempts));
    CHECK(Current(L"EnableZ7Feature") == fakes::Number32(row.stored));
    CHECK(fakes::driver.timer.words[0] == 0x80000000);
  }
  const ServedMachine machine;
  SetTimer(0x80000000, 0);
  fakes::settings.failer = {.firstFailing = 1};
  CHECK(SetFeatureEnabled(false));
  CHECK(fakes::driver.timer.words[0] == 0);
}

TEST_CASE("a controller that cannot be built is the answer, and all else is switched") {
  const ServedMachine machine;
  SetCurrent(L"CurrentAttempt", 3);
  SetTimer(0x40000343, 0x38012345);
  TakeProvisionsAway();
  CHECK(Ask([] { return SetFeatureEnabled(true); }) ==
        Answer{false, Joined({kNotBuilt,
                              kAttemptsRead,
                              {"settings: WriteSetting CurrentAttempt 10"},
                              kOnWritten,
                              kTimerRead,
                              {"driver: write timer c0000343 b8012345"}})});
  CHECK(ControllerIsGone());
  CHECK(Current(L"EnableZ7Feature") == fakes::Number32(1));
  CHECK(Current(L"CurrentAttempt") == fakes::Number32(10));
}

TEST_CASE("with a data file of another version the rest is switched as well") {
  const ServedMachine machine;
  SetFeatureEnabled(true);
  PostEvent(std::make_unique<SMEventData>(SMEvent::Saving));
  SetFeatureEnabled(false);
  auto bytes = ReadWholeFile(machine.DataFile()).value();
  bytes[0] = 1;
  REQUIRE(WriteWholeFile(machine.DataFile(), bytes.data(), bytes.size()));
  CHECK_FALSE(SetFeatureEnabled(true));
  CHECK(ControllerIsGone());
  CHECK(Current(L"EnableZ7Feature") == fakes::Number32(1));
  CHECK(fakes::driver.timer.words[0] == 0x80000000);
}

TEST_CASE("after a refusal the service can still be asked, switched off, and switched on later") {
  const ServedMachine machine;
  const auto provisions = fakes::settings.defaults.predictorValues;
  TakeProvisionsAway();
  CHECK_FALSE(SetFeatureEnabled(true));
  CHECK(Ping());
  CHECK_FALSE(ResetHistory());
  CHECK(SetFeatureEnabled(false));
  CHECK(Current(L"EnableZ7Feature") == fakes::Number32(0));
  fakes::settings.defaults.predictorValues = provisions;
  CHECK(SetFeatureEnabled(true));
  CHECK(ControllerRuns());
}

TEST_CASE("a controller that runs is not built again, so what it would need may be gone") {
  const ServedMachine machine;
  SetFeatureEnabled(true);
  TakeProvisionsAway();
  CHECK(SetFeatureEnabled(true));
  CHECK(ControllerRuns());
}

TEST_CASE("the running service goes by the client's choice from then on") {
  const ServedMachine machine;
  SetCurrent(L"TotalAttempts", 10);
  FeatureEnabled = false;
  SetFeatureEnabled(true);
  CHECK(FeatureEnabled);
  SetFeatureEnabled(false);
  CHECK_FALSE(FeatureEnabled);
  const Calls calls = Ask([] {
                        TryStartController();
                        return true;
                      }).calls;
  CHECK(calls.back() == "settings: WriteSetting StartTime 1795248309");
}

TEST_CASE("a controller that cannot be built yet is built at a resume") {
  const ServedMachine machine;
  SetCurrent(L"TotalAttempts", 10);
  FeatureEnabled = false;
  const auto provisions = fakes::settings.defaults.predictorValues;
  TakeProvisionsAway();
  CHECK_FALSE(SetFeatureEnabled(true));
  fakes::settings.defaults.predictorValues = provisions;
  TryStartController();
  fakes::threads.Run();
  CHECK(ControllerRuns());
}

TEST_CASE("the feature is enabled when its setting is exactly 1") {
  for (const uint32_t value : {0U, 1U, 2U, 0x80000001U, 0xFFFFFFFFU}) {
    CAPTURE(value);
    const ServedMachine machine;
    SetCurrent(L"EnableZ7Feature", value);
    bool enabled = value != 1;
    CHECK(Ask([&] { return GetFeatureEnabled(&enabled); }) ==
          Answer{true, {"settings: ReadSetting EnableZ7Feature"}});
    CHECK(enabled == (value == 1));
  }
}

TEST_CASE("the feature's setting is looked up in the current, the branding and the default key") {
  const ServedMachine machine;
  bool enabled = true;
  CHECK_FALSE(GetFeatureEnabled(&enabled));
  CHECK(enabled);
  fakes::settings.defaults.values[L"EnableZ7Feature"] = fakes::Number32(0);
  CHECK(GetFeatureEnabled(&enabled));
  CHECK_FALSE(enabled);
  BrandingPresent = true;
  fakes::settings.branding.values[L"EnableZ7Feature"] = fakes::Number32(1);
  CHECK(GetFeatureEnabled(&enabled));
  CHECK(enabled);
  SetCurrent(L"EnableZ7Feature", 0);
  CHECK(GetFeatureEnabled(&enabled));
  CHECK_FALSE(enabled);
}

TEST_CASE("the answer is the feature's setting, not whether the controller runs") {
  const ServedMachine machine;
  StartController();
  FeatureEnabled = true;
  bool enabled = true;
  CHECK_FALSE(GetFeatureEnabled(&enabled));
  SetCurrent(L"EnableZ7Feature", 0);
  CHECK(GetFeatureEnabled(&enabled));
  CHECK_FALSE(enabled);
}

}  // namespace dozewell
